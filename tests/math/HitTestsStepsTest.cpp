/// @file
/// The hit tests beside their steps written down one after the other: the same answers to the
/// bit, for ordinary coordinates and for those that no model should have.

#include "Floats.h"

#include <KesVizCore/math/HitTests.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace KesVizCore {
namespace {

constexpr float kHitTolerance = 1e-9F;
constexpr float kUntouched = -77.0F;

/// Rounds whatever the compiler would like to keep.
float narrowed(double value) {
    const volatile float rounded = static_cast<float>(value);
    return rounded;
}

// A double holds sum, difference, product and quotient of floats exactly enough to be rounded once.
Vector minus(const Vector& a, const Vector& b) {
    return {narrowed(double{a[0]} - double{b[0]}), narrowed(double{a[1]} - double{b[1]}),
            narrowed(double{a[2]} - double{b[2]})};
}

Vector scaled(const Vector& v, float factor) {
    return {narrowed(double{v[0]} * double{factor}), narrowed(double{v[1]} * double{factor}),
            narrowed(double{v[2]} * double{factor})};
}

Vector divided(const Vector& v, float by) {
    return {narrowed(double{v[0]} / double{by}), narrowed(double{v[1]} / double{by}),
            narrowed(double{v[2]} / double{by})};
}

Vector along(const Vector& start, float factor, const Vector& direction) {
    const Vector way = scaled(direction, factor);
    return {narrowed(double{start[0]} + double{way[0]}),
            narrowed(double{start[1]} + double{way[1]}),
            narrowed(double{start[2]} + double{way[2]})};
}

float dotOf(const Vector& a, const Vector& b) {
    const float product = narrowed(double{a[0]} * double{b[0]} + double{a[1]} * double{b[1]} +
                                   double{a[2]} * double{b[2]});
    return std::fabs(product) < 1e-7F ? 0.0F : product;
}

Vector crossOf(const Vector& a, const Vector& b) {
    return {narrowed(double{a[1]} * double{b[2]} - double{a[2]} * double{b[1]}),
            narrowed(double{a[2]} * double{b[0]} - double{a[0]} * double{b[2]}),
            narrowed(double{a[0]} * double{b[1]} - double{a[1]} * double{b[0]})};
}

float lengthOf(const Vector& v) {
    return narrowed(std::sqrt(double{v[0]} * double{v[0]} + double{v[1]} * double{v[1]} +
                              double{v[2]} * double{v[2]}));
}

Vector normalized(Vector v) {
    for (float& component : v) {
        component = std::fabs(component) < 1e-7F ? 0.0F : component;
    }
    for (bool changed = true; changed;) {
        changed = false;
        const float size = lengthOf(v);
        if (!(size > 1e-7F)) {
            throw std::invalid_argument("");
        }
        v = scaled(v, narrowed(1.0 / double{size}));
        for (float& component : v) {
            if (std::fabs(component) < 1e-7F && component != 0.0F) {
                component = 0.0F;
                changed = true;
            }
        }
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const float size = std::fabs(v[axis]);
        if (size > 0.9999999F && size < 1.0000001F) {
            Vector unit = {};
            unit[axis] = v[axis] > 0.0F ? 1.0F : -1.0F;
            return unit;
        }
    }
    return v;
}

bool shareHalfSpace(const Vector& p1, const Vector& p2, const Vector& q, const Vector& n) {
    const float side1 = dotOf(minus(p1, q), n);
    const float side2 = dotOf(minus(p2, q), n);
    return !(narrowed(double{side1} * double{side2}) < 0.0F);
}

/// @p point and @p root may be one.
bool stepsOfSegment(const Vector& a, const Vector& b, float aperture, const Vector& root,
                    const Vector& direction, Vector& point, float& distance) {
    const Vector u = minus(b, a);
    const Vector w = minus(a, root);
    const Rounded uv = dotOf(u, direction);
    const Rounded uu = dotOf(u, u);
    const Rounded vv = dotOf(direction, direction);
    const Rounded vw = dotOf(direction, w);
    const Rounded uw = dotOf(u, w);
    const Rounded difference = uv / uu - vv / uv;
    Rounded s = 0.0F;
    Rounded t = vw / vv;
    if (std::fabs(uv.Value()) < kHitTolerance) {
        s = Rounded(dotOf(Vector{-u[0], -u[1], -u[2]}, w)) / uu;
    } else if (!(std::fabs(difference.Value()) < kHitTolerance)) {
        t = (uw / uu - vw / uv) / difference;
        s = t * uv / uu - uw / uu;
    }
    point = along(a, s.Value(), u);
    const Vector rayPoint = along(root, t.Value(), direction);
    distance = t.Value();
    return aperture > lengthOf(minus(point, rayPoint)) &&
           double{s.Value()} <= 1.0 + double{kHitTolerance} &&
           double{s.Value()} >= -double{kHitTolerance} &&
           double{t.Value()} >= -double{kHitTolerance};
}

bool stepsOfPlane(const Vector& p0, const Vector& normal, const Vector& root,
                  const Vector& direction, Vector& point, float& distance) {
    const float size = lengthOf(normal);
    if (size < kHitTolerance) {
        return false;
    }
    const Vector n = divided(normal, size);
    const Vector offset = scaled(n, dotOf(n, minus(p0, root)));
    const float height = lengthOf(offset);
    if (height < kHitTolerance) {
        point = Vector(root);
        distance = 0.0F;
        return true;
    }
    const Vector unit = normalized(direction);
    const float cosine = dotOf(divided(offset, height), unit);
    if (std::fabs(cosine) < kHitTolerance) {
        return false;
    }
    const float reach = narrowed(double{height} / double{cosine});
    if (reach < 0.0F) {
        return false;
    }
    distance = reach;
    point = along(root, reach, unit);
    return true;
}

bool stepsOfEdges(const Vector& p0, const Vector& p1, const Vector& p2, const Vector& root,
                  const Vector& direction, Vector& point, float& distance) {
    bool hit = stepsOfSegment(p0, p1, kHitTolerance, root, direction, point, distance);
    for (const auto& [start, end] : {std::pair{p1, p2}, std::pair{p0, p2}}) {
        Vector scratch = {};
        float nearer = 0.0F;
        if (!hit) {
            hit = stepsOfSegment(start, end, kHitTolerance, root, direction, point, distance);
        } else if (stepsOfSegment(start, end, kHitTolerance, root, direction, scratch, nearer) &&
                   distance > nearer) {
            point = scratch;
            distance = nearer;
        }
    }
    return hit;
}

/// @p point and @p root may be one; @p edgeOn is null when nobody asks.
bool stepsOfTriangle(const Vector& p0, const Vector& p1, const Vector& p2, const Vector& root,
                     const Vector& direction, Vector& point, float& distance, bool* edgeOn) {
    if (edgeOn != nullptr) {
        *edgeOn = false;
    }
    const Vector normal = crossOf(minus(p1, p0), minus(p2, p0));
    if (!stepsOfPlane(p0, normal, root, direction, point, distance)) {
        return false;
    }
    const bool inside = shareHalfSpace(p0, point, p1, crossOf(minus(p1, p2), normal)) &&
                        shareHalfSpace(p1, point, p2, crossOf(minus(p2, p0), normal)) &&
                        shareHalfSpace(p2, point, p0, crossOf(minus(p0, p1), normal));
    bool grazing = false;
    if ((!inside || edgeOn != nullptr) && &point == &root) {
        const Vector unitNormal = normalized(normal);
        grazing = std::fabs(dotOf(unitNormal, normalized(direction))) < kHitTolerance;
        if (grazing && edgeOn != nullptr) {
            *edgeOn = true;
        }
    }
    return !inside && grazing ? stepsOfEdges(p0, p1, p2, root, direction, point, distance) : inside;
}

/// What a call answers and leaves behind, as bits; all NaN are one.
struct Answer {
    bool threw = false;
    bool hit = false;
    bool edgeOn = true;
    Vector point = {kUntouched, kUntouched, kUntouched};
    float distance = kUntouched;

    std::string Text() const {
        const auto text = [](float value) {
            return std::isnan(value) ? std::string("NaN") : std::to_string(bitsOf(value));
        };
        return std::string(threw ? "threw " : "") + (hit ? "hit " : "miss ") +
               (edgeOn ? "edge-on " : "") + text(point[0]) + " " + text(point[1]) + " " +
               text(point[2]) + " at " + text(distance);
    }
};

/// Rays and triangles of one kind each: on a small grid, where edges are met and arithmetic is
/// exact, anywhere, close to the tolerances, far too large, or with components that are none.
class Coordinates {
public:
    explicit Coordinates(std::uint64_t seed) : _numbers(seed) {}

    void NextKind() { _kind = static_cast<int>(_numbers.Between(0.0, 6.0)); }
    int Grid() { return static_cast<int>(_numbers.Between(0.0, 5.0)) - 2; }
    Vector Next() { return {component(), component(), component()}; }
    Vector Flat() { return {component(), component(), 0.0F}; }
    bool Coin() { return _numbers.Between(0.0, 1.0) < 0.5; }

private:
    float component() {
        const auto onGrid = static_cast<float>(Grid());
        switch (_kind) {
            case 0:
                return onGrid;
            case 1:
                return onGrid * 1e-4F;
            case 2:
                return onGrid + _numbers.FloatBetween(-2e-7, 2e-7);
            case 3:
                return onGrid * (Coin() ? 3e9F : 1e19F) + _numbers.FloatBetween(-1.0, 1.0);
            case 4: {
                const float strange[] = {0.0F,  -0.0F, 1e-9F,     1e-7F,      1e-40F,
                                         3e38F, kNaN,  kInfinity, -kInfinity, -1e-9F};
                return Coin() ? onGrid
                              : strange[static_cast<std::size_t>(_numbers.Between(0.0, 10.0))];
            }
            default:
                return _numbers.FloatBetween(-5.0, 5.0);
        }
    }

    SeededNumbers _numbers;
    int _kind = 0;
};

template <typename Test>
std::string answerOf(Answer answer, const Test& test) {
    try {
        answer.hit = test(answer);
    } catch (const std::invalid_argument&) {
        answer.threw = true;
    }
    return answer.Text();
}

TEST(HitTestsStepsTest, TriangleAnswersAreThoseOfTheSteps) {
    Coordinates coordinates(301);
    int hits = 0;
    for (int round = 0; round < 10000; ++round) {
        coordinates.NextKind();
        const bool isFlat = coordinates.Coin();  // often in one plane with the ray
        const auto next = [&] { return isFlat ? coordinates.Flat() : coordinates.Next(); };
        const Vector p0 = next();
        const Vector p1 = next();
        const Vector p2 = next();
        const Vector root = coordinates.Coin() ? next() : coordinates.Next();
        const Vector direction = coordinates.Coin() ? next() : coordinates.Next();
        SCOPED_TRACE(::testing::PrintToString(p0) + ::testing::PrintToString(p1) +
                     ::testing::PrintToString(p2) + " root " + ::testing::PrintToString(root) +
                     " direction " + ::testing::PrintToString(direction));
        for (const bool inPlace : {false, true}) {
            Answer start;
            start.point = inPlace ? root : start.point;
            const auto rootIn = [&](const Answer& a) -> const Vector& {
                return inPlace ? a.point : root;
            };
            ASSERT_EQ(answerOf(start,
                               [&](Answer& a) {
                                   return RayHitsTriangle(p0.data(), p1.data(), p2.data(),
                                                          rootIn(a).data(), direction.data(),
                                                          a.point.data(), a.distance, a.edgeOn);
                               }),
                      answerOf(start, [&](Answer& a) {
                          const bool hit = stepsOfTriangle(p0, p1, p2, rootIn(a), direction,
                                                           a.point, a.distance, &a.edgeOn);
                          hits += hit ? 1 : 0;
                          return hit;
                      }));
            ASSERT_EQ(answerOf(start,
                               [&](Answer& a) {
                                   return RayHitsTriangle(p0.data(), p1.data(), p2.data(),
                                                          rootIn(a).data(), direction.data(),
                                                          a.point.data(), a.distance);
                               }),
                      answerOf(start, [&](Answer& a) {
                          return stepsOfTriangle(p0, p1, p2, rootIn(a), direction, a.point,
                                                 a.distance, nullptr);
                      }));
        }
    }
    EXPECT_GT(hits, 1500);
}

TEST(HitTestsStepsTest, SegmentAnswersAreThoseOfTheSteps) {
    Coordinates coordinates(302);
    int hits = 0;
    for (int round = 0; round < 10000; ++round) {
        coordinates.NextKind();
        const Vector a = coordinates.Next();
        const Vector b = coordinates.Next();
        const Vector root = coordinates.Next();
        const Vector direction = coordinates.Next();
        const float aperture = static_cast<float>(coordinates.Grid()) + 0.5F;
        SCOPED_TRACE(::testing::PrintToString(a) + ::testing::PrintToString(b) + " root " +
                     ::testing::PrintToString(root) + " direction " +
                     ::testing::PrintToString(direction));
        for (const bool inPlace : {false, true}) {
            Answer start;
            start.point = inPlace ? root : start.point;
            const auto rootIn = [&](const Answer& answer) -> const Vector& {
                return inPlace ? answer.point : root;
            };
            ASSERT_EQ(answerOf(start,
                               [&](Answer& answer) {
                                   return RayHitsLineSegment(
                                       a.data(), b.data(), aperture, rootIn(answer).data(),
                                       direction.data(), answer.point.data(), answer.distance);
                               }),
                      answerOf(start, [&](Answer& answer) {
                          const bool hit = stepsOfSegment(a, b, aperture, rootIn(answer), direction,
                                                          answer.point, answer.distance);
                          hits += hit ? 1 : 0;
                          return hit;
                      }));
        }
    }
    EXPECT_GT(hits, 500);
}

}  // namespace
}  // namespace KesVizCore
