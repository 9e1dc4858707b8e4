#include "view/FillPolygon.h"

#include "view/Vectors.h"

#include <cstddef>

namespace kesview {

namespace {

struct Flat {
    double x;
    double y;
};

/// Twice the signed area.
double area(const Flat& a, const Flat& b, const Flat& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The points in their own plane, so turned that the line runs counter-clockwise.
std::vector<Flat> flattened(const float* points, int count) {
    const auto at = [points](int index) {
        const float* point = points + 3 * index;
        return Vector{point[0], point[1], point[2]};
    };
    Vector normal = {0, 0, 0};
    for (int index = 0; index < count; ++index) {
        normal = normal + cross(at(index) - at(0), at((index + 1) % count) - at(0));
    }
    normal = unit(normal);
    const Vector aside = std::abs(normal[0]) < 0.9 ? Vector{1, 0, 0} : Vector{0, 1, 0};
    const Vector u = unit(cross(aside, normal));
    const Vector v = cross(normal, u);
    std::vector<Flat> flat;
    for (int index = 0; index < count; ++index) {
        flat.push_back({dot(u, at(index) - at(0)), dot(v, at(index) - at(0))});
    }
    return flat;
}

/// Whether the corner before, at and after can be cut off: it is convex and no other lies in it.
bool isEar(const std::vector<Flat>& flat, const std::vector<int>& left, std::size_t place) {
    const std::size_t count = left.size();
    const auto at = [&](std::size_t number) {
        return flat[static_cast<std::size_t>(left[number % count])];
    };
    const Flat a = at(place + count - 1);
    const Flat b = at(place);
    const Flat c = at(place + 1);
    if (!(area(a, b, c) > 0)) {
        return false;
    }
    for (std::size_t other = place + 2; other < place + count - 1; ++other) {
        const Flat p = at(other);
        if (area(a, b, p) > 0 && area(b, c, p) > 0 && area(c, a, p) >= 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::vector<int> fillPolygon(const float* points, int count) {
    if (points == nullptr || count < 3) {
        return {};
    }
    const std::vector<Flat> flat = flattened(points, count);
    std::vector<int> left;
    for (int index = 0; index < count; ++index) {
        left.push_back(index);
    }
    std::vector<int> corners;
    std::size_t refused = 0;
    for (std::size_t place = 0; left.size() > 2 && refused < left.size();) {
        place %= left.size();
        const auto neighbour = [&](std::size_t step) { return left[(place + step) % left.size()]; };
        if (isEar(flat, left, place)) {
            corners.insert(corners.end(), {neighbour(left.size() - 1), left[place], neighbour(1)});
            left.erase(left.begin() + static_cast<std::ptrdiff_t>(place));
            refused = 0;
        } else {
            ++refused;
            ++place;
        }
    }
    return corners;
}

}  // namespace kesview
