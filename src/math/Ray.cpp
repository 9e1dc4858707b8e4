#include "platform/Platform.h"

#include <KesVizCore/math/Ray.h>

#include <cstdarg>
#include <cstddef>

namespace KesVizCore {

namespace {

constexpr std::size_t kLongestText = 1023;  // the longest numbers take fewer than 700 characters

std::string formatted(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = platform::formatInCLocale(format, arguments, kLongestText);
    va_end(arguments);
    return text;
}

}  // namespace

Ray::Ray() : Root{}, Direction{}, Aperture(0.0) {}

Ray::Ray(const float* root, const float* direction, const double& aperture)
    : Root{root[0], root[1], root[2]},
      Direction{direction[0], direction[1], direction[2]},
      Aperture(aperture) {}

Ray::Ray(const double* root, const double* direction, const double& aperture)
    : Root{static_cast<float>(root[0]), static_cast<float>(root[1]), static_cast<float>(root[2])},
      Direction{static_cast<float>(direction[0]), static_cast<float>(direction[1]),
                static_cast<float>(direction[2])},
      Aperture(aperture) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): numbers copied onto themselves stay
void Ray::operator=(const Ray& other) {
    for (int i = 0; i < 3; ++i) {
        Root[i] = other.Root[i];
        Direction[i] = other.Direction[i];
    }
    Aperture = other.Aperture;
}

std::string Ray::ToString() const {
    return formatted(
        "Ray: Root = [%7.3f, %7.3f, %7.3f ]"
        "  Direction = [%7.3f, %7.3f, %7.3f ] Aperture = %5.3f",
        double{Root[0]}, double{Root[1]}, double{Root[2]}, double{Direction[0]},
        double{Direction[1]}, double{Direction[2]}, Aperture);
}

}  // namespace KesVizCore
