#pragma once

#include <KesVizCore/Export.h>

#include <string>

namespace KesVizCore {

/// A half-line that something is picked with, and how far off it still picks.
///
/// @par Units and ranges
/// Model units; any number is stored unchecked. The direction need not have length 1.
///
/// @par Errors
/// No operation fails, but that ToString throws std::bad_alloc when memory runs out. Array
/// arguments must not be null.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API Ray {
    /// All zero.
    Ray();
    /// Copies 3 floats of @p root and 3 of @p direction.
    Ray(const float* root, const float* direction, const double& aperture);
    /// Rounds 3 doubles of @p root and 3 of @p direction to floats; the aperture stays a double.
    Ray(const double* root, const double* direction, const double& aperture);
    Ray(const Ray& other) = default;  ///< all seven numbers

    /// Returns nothing: assignments of rays do not chain.
    void operator=(const Ray& other);

    /// All seven numbers with three decimal places, those of the arrays at least 7 wide:
    /// "Ray: Root = [  1.000,   2.000,   3.000 ]  Direction = [  0.000,   0.000,  -1.000 ]
    /// Aperture = 0.500", in one line, with points in whatever locale.
    std::string ToString() const;

    float Root[3];       ///< where it starts: x, y, z
    float Direction[3];  ///< where it goes: x, y, z, of any length
    double Aperture;     ///< hits up to this far from the ray count
};

}  // namespace KesVizCore
