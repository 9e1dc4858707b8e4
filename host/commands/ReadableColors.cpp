#include "commands/ReadableColors.h"

#include <algorithm>
#include <cmath>

namespace kesview {

namespace {

constexpr double kLeastContrast = 60;  // of 255
constexpr Color kDark = {20, 60, 140, 255};
constexpr Color kLight = {255, 255, 255, 255};

/// How far apart two colours are, by the weights that the eye gives them; at most 255.
double contrast(const Color& a, const Color& b) {
    constexpr double weights[] = {0.3, 0.59, 0.11};
    double sum = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const double step = static_cast<double>(a[i]) - static_cast<double>(b[i]);
        sum += weights[i] * step * step;
    }
    return std::sqrt(sum);
}

double contrastWithBackground(const Color& color, const Picture& picture) {
    const double bottom = contrast(color, picture.background);
    return picture.backgroundTop ? std::min(bottom, contrast(color, *picture.backgroundTop))
                                 : bottom;
}

}  // namespace

std::size_t makeAnnotationsReadable(Picture& picture) {
    const bool darkIsFarther =
        contrastWithBackground(kDark, picture) >= contrastWithBackground(kLight, picture);
    const Color readable = darkIsFarther ? kDark : kLight;
    std::size_t changed = 0;
    const auto make = [&](Color& color) {
        if (contrastWithBackground(color, picture) < kLeastContrast) {
            color = {readable[0], readable[1], readable[2], color[3]};
            ++changed;
        }
    };
    for (TriangleBatch& batch : picture.annotationTriangles) {
        make(batch.color);
    }
    for (LineBatch& batch : picture.annotationLines) {
        make(batch.color);
    }
    for (PictureText& text : picture.texts) {
        make(text.color);
    }
    return changed;
}

}  // namespace kesview
