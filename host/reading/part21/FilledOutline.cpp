/// @file
/// See FilledOutline.h.

#include "reading/part21/FilledOutline.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kesview {
namespace {

using Flat = std::array<double, 2>;

struct Ring {
    std::vector<std::int32_t> corners;  ///< indices of points; counter-clockwise if it bounds
};

double turn(const Flat& a, const Flat& b, const Flat& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

Vector normalOf(const std::vector<Vector>& outline) {
    Vector sum = {0, 0, 0};
    for (std::size_t i = 0; i < outline.size(); ++i) {
        sum = sum + cross(outline[i] - outline[0], outline[(i + 1) % outline.size()] - outline[0]);
    }
    return sum;
}

class Filler {
public:
    explicit Filler(std::vector<Flat> points) : _points(std::move(points)) {}

    double Area(const Ring& ring) const {
        double twice = 0;
        for (std::size_t i = 0; i < ring.corners.size(); ++i) {
            const Flat& a = At(ring, i);
            const Flat& b = At(ring, (i + 1) % ring.corners.size());
            twice += a[0] * b[1] - b[0] * a[1];
        }
        return twice / 2;
    }

    bool Contains(const Ring& ring, const Flat& point) const {
        bool inside = false;
        for (std::size_t i = 0, j = ring.corners.size() - 1; i < ring.corners.size(); j = i++) {
            const Flat& a = At(ring, i);
            const Flat& b = At(ring, j);
            if ((a[1] > point[1]) != (b[1] > point[1]) &&
                point[0] < (b[0] - a[0]) * (point[1] - a[1]) / (b[1] - a[1]) + a[0]) {
                inside = !inside;
            }
        }
        return inside;
    }

    const Flat& At(const Ring& ring, std::size_t i) const {
        return _points[static_cast<std::size_t>(ring.corners[i])];
    }

    /// Joins a hole to its ring by a bridge from its rightmost corner to the nearest corner that
    /// sees it.
    void Bridge(Ring& ring, const Ring& hole) const {
        std::size_t from = 0;
        for (std::size_t i = 1; i < hole.corners.size(); ++i) {
            from = At(hole, i)[0] > At(hole, from)[0] ? i : from;
        }
        std::vector<std::size_t> order(ring.corners.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        const Flat& start = At(hole, from);
        const auto distance = [&](std::size_t i) {
            const double x = At(ring, i)[0] - start[0];
            const double y = At(ring, i)[1] - start[1];
            return x * x + y * y;
        };
        std::sort(order.begin(), order.end(),
                  [&](std::size_t a, std::size_t b) { return distance(a) < distance(b); });
        const auto seen = std::find_if(order.begin(), order.end(), [&](std::size_t i) {
            return !Crosses(ring, start, At(ring, i)) && !Crosses(hole, start, At(ring, i));
        });
        const std::size_t to = seen == order.end() ? order.front() : *seen;
        std::vector<std::int32_t> way;
        for (std::size_t i = 0; i <= hole.corners.size(); ++i) {
            way.push_back(hole.corners[(from + i) % hole.corners.size()]);
        }
        way.push_back(ring.corners[to]);
        ring.corners.insert(ring.corners.begin() + static_cast<std::ptrdiff_t>(to) + 1, way.begin(),
                            way.end());
    }

    /// Ear clipping. A ring that touches itself may leave a rest; it is given up then.
    std::vector<std::int32_t> Triangles(Ring ring) const {
        std::vector<std::int32_t> triangles;
        while (ring.corners.size() >= 3) {
            const std::size_t count = ring.corners.size();
            std::size_t ear = 0;
            while (ear < count && !IsEar(ring, ear)) {
                ++ear;
            }
            if (ear == count) {
                break;
            }
            const std::int32_t corners[] = {ring.corners[(ear + count - 1) % count],
                                            ring.corners[ear], ring.corners[(ear + 1) % count]};
            if (turn(Point(corners[0]), Point(corners[1]), Point(corners[2])) > 0) {
                triangles.insert(triangles.end(), std::begin(corners), std::end(corners));
            }
            ring.corners.erase(ring.corners.begin() + static_cast<std::ptrdiff_t>(ear));
        }
        return triangles;
    }

private:
    const Flat& Point(std::int32_t index) const { return _points[static_cast<std::size_t>(index)]; }

    bool Crosses(const Ring& ring, const Flat& a, const Flat& b) const {
        for (std::size_t i = 0; i < ring.corners.size(); ++i) {
            const Flat& c = At(ring, i);
            const Flat& d = At(ring, (i + 1) % ring.corners.size());
            if (turn(a, b, c) * turn(a, b, d) < 0 && turn(c, d, a) * turn(c, d, b) < 0) {
                return true;
            }
        }
        return false;
    }

    bool IsEar(const Ring& ring, std::size_t ear) const {
        const std::size_t count = ring.corners.size();
        const Flat& a = At(ring, (ear + count - 1) % count);
        const Flat& b = At(ring, ear);
        const Flat& c = At(ring, (ear + 1) % count);
        const double size = turn(a, b, c);
        if (size < 0) {
            return false;
        }
        return size == 0 || std::none_of(ring.corners.begin(), ring.corners.end(), [&](auto i) {
                   const Flat& p = Point(i);
                   if (p == a || p == b || p == c) {
                       return false;
                   }
                   return turn(a, b, p) >= 0 && turn(b, c, p) >= 0 && turn(c, a, p) >= 0;
               });
    }

    std::vector<Flat> _points;
};

}  // namespace

std::optional<PmiDrawing::Area> fillOutlines(const std::vector<std::vector<Vector>>& outlines) {
    PmiDrawing::Area area;
    std::vector<Ring> rings;
    Vector normal = {0, 0, 0};
    for (const auto& outline : outlines) {
        Ring ring;
        const bool closed = outline.size() > 1 && lengthOf(outline.front() - outline.back()) < 1e-9;
        for (std::size_t i = 0; i + (closed ? 1 : 0) < outline.size(); ++i) {
            ring.corners.push_back(static_cast<std::int32_t>(area.points.size()));
            area.points.push_back(outline[i]);
        }
        if (ring.corners.size() > 2) {
            const Vector own = normalOf(outline);
            normal = lengthOf(own) > lengthOf(normal) ? own : normal;
            rings.push_back(std::move(ring));
        }
    }
    if (lengthOf(normal) < 1e-18) {
        return std::nullopt;
    }
    const Vector z = normalized(normal, {0, 0, 1});
    const Vector x =
        normalized(cross(std::abs(z[0]) < 0.9 ? Vector{1, 0, 0} : Vector{0, 1, 0}, z), {1, 0, 0});
    const Vector y = cross(z, x);
    std::vector<Flat> flat;
    for (const Vector& point : area.points) {
        flat.push_back({dot(point, x), dot(point, y)});
    }
    const Filler filler(std::move(flat));

    // A ring within an odd number of others is a hole of the smallest of them.
    std::vector<std::size_t> depths;
    for (const Ring& ring : rings) {
        depths.push_back(static_cast<std::size_t>(
            std::count_if(rings.begin(), rings.end(), [&](const Ring& other) {
                return &other != &ring && filler.Contains(other, filler.At(ring, 0));
            })));
    }
    std::vector<Ring> bounds;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const bool hole = depths[i] % 2 != 0;
        if ((filler.Area(rings[i]) < 0) != hole) {
            std::reverse(rings[i].corners.begin(), rings[i].corners.end());
        }
    }
    for (std::size_t i = 0; i < rings.size(); ++i) {
        if (depths[i] % 2 != 0) {
            continue;
        }
        Ring bound = rings[i];
        for (std::size_t k = 0; k < rings.size(); ++k) {
            if (depths[k] == depths[i] + 1 && filler.Contains(rings[i], filler.At(rings[k], 0))) {
                filler.Bridge(bound, rings[k]);
            }
        }
        const auto triangles = filler.Triangles(std::move(bound));
        area.triangles.insert(area.triangles.end(), triangles.begin(), triangles.end());
    }
    return area.triangles.empty() ? std::nullopt : std::make_optional(std::move(area));
}

}  // namespace kesview
