/// @file
/// See StlTriangles.h.

#include "reading/occ/StlTriangles.h"

#include "reading/AbsurdLength.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace kesview {

namespace {

struct CornerHash {
    std::size_t operator()(const StlCorner& corner) const {
        std::size_t hash = 0;
        for (const float length : corner) {
            const float positive = length + 0.0F;  // the two zeros are one place
            std::uint32_t bits = 0;
            std::memcpy(&bits, &positive, sizeof bits);
            hash = (hash ^ bits) * 0x9E3779B97F4A7C15ULL;
        }
        return hash ^ (hash >> 32U);
    }
};

class Welder {
public:
    explicit Welder(Face& face) : _face(face) {}

    std::int32_t IndexOf(const StlCorner& corner) {
        const auto next = static_cast<std::int32_t>(_indices.size());
        const auto [known, isNew] = _indices.try_emplace(corner, next);
        if (isNew) {
            _face.points.insert(_face.points.end(), corner.begin(), corner.end());
        }
        return known->second;
    }

private:
    Face& _face;
    std::unordered_map<StlCorner, std::int32_t, CornerHash> _indices;
};

bool isSound(const StlTriangle& triangle) {
    return std::all_of(triangle.begin(), triangle.end(), [](const StlCorner& corner) {
        return std::all_of(corner.begin(), corner.end(),
                           [](float length) { return isSoundLength(static_cast<double>(length)); });
    });
}

bool isDegenerate(const StlTriangle& triangle) {
    Vector a{};
    Vector b{};
    for (std::size_t i = 0; i < 3; ++i) {
        a[i] = static_cast<double>(triangle[1][i]) - static_cast<double>(triangle[0][i]);
        b[i] = static_cast<double>(triangle[2][i]) - static_cast<double>(triangle[0][i]);
    }
    const double x = a[1] * b[2] - a[2] * b[1];
    const double y = a[2] * b[0] - a[0] * b[2];
    const double z = a[0] * b[1] - a[1] * b[0];
    return x == 0 && y == 0 && z == 0;
}

}  // namespace

StlLosses fillFace(const StlSolid& solid, Face& face) {
    StlLosses losses;
    Welder welder(face);
    face.triangles.reserve(solid.triangles.size() * 3);
    for (const StlTriangle& triangle : solid.triangles) {
        if (!isSound(triangle)) {
            ++losses.absurd;
        } else if (isDegenerate(triangle)) {
            ++losses.degenerate;
        } else {
            for (const StlCorner& corner : triangle) {
                face.triangles.push_back(welder.IndexOf(corner));
            }
        }
    }
    return losses;
}

}  // namespace kesview
