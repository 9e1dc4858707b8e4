#include "drawing/vtk/Texts.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utf8.h>

namespace kesview {
namespace {

constexpr double linePitch = 1.7;  ///< in heights of a capital letter

/// Bytes that are no UTF-8 become U+FFFD.
std::u32string decode(const std::string& text) {
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
    std::u32string letters;
    utf8::utf8to32(valid.begin(), valid.end(), std::back_inserter(letters));
    return letters;
}

/// Sets letters one after the other, line by line.
class TextSetter {
public:
    TextSetter(const PlacedText& placed, TriangleBatch& batch) : _placed(placed), _batch(batch) {}

    void StartLine() {
        _x = 0;
        _y -= linePitch;
    }

    void Add(const Glyph& glyph) {
        const auto first = std::uint32_t(_batch.points.size() / 3);
        for (const auto& point : glyph.points)
            addPoint(_x + point[0], _y + point[1]);
        for (const std::uint32_t index : glyph.triangles)
            _batch.triangles.push_back(first + index);
        _x += glyph.advance;
    }

private:
    void addPoint(double x, double y) {
        for (std::size_t i = 0; i < 3; ++i) {
            const double offset = _placed.height * (x * _placed.u[i] + y * _placed.v[i]);
            _batch.points.push_back(float(_placed.position[i] + offset));
        }
    }

    const PlacedText& _placed;
    TriangleBatch& _batch;
    double _x = 0;
    double _y = 0;
};

void addText(const PlacedText& placed, Fonts& fonts, TriangleBatch& batch) {
    TextSetter setter(placed, batch);
    for (const char32_t letter : decode(placed.text)) {
        if (letter == U'\n')
            setter.StartLine();
        else if (letter != U'\r')
            setter.Add(fonts.Find(letter));
    }
}

TriangleBatch& batchOf(std::vector<TriangleBatch>& batches, const Color& color) {
    const auto hasColor = [&](const TriangleBatch& batch) { return batch.color == color; };
    const auto found = std::find_if(batches.begin(), batches.end(), hasColor);
    if (found != batches.end())
        return *found;
    batches.emplace_back();
    batches.back().color = color;
    batches.back().lit = false;
    return batches.back();
}

}  // namespace

std::vector<TriangleBatch> makeTextTriangles(const std::vector<PictureText>& texts, Fonts& fonts) {
    std::vector<TriangleBatch> batches;
    for (const PictureText& text : texts)
        addText(text.placed, fonts, batchOf(batches, text.color));
    return batches;
}

}  // namespace kesview
