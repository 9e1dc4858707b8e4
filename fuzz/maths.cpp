/// @file
/// The vectors, matrices, rays, boxes and transforms of the library against MathReference.h, exact
/// to the bit, on any numbers: not finite ones, denormals, neighbours of every tolerance.
#include "Input.h"
#include "MathReference.h"
#include "Numbers.h"

#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizBox.h>
#include <KesVizCore/model/VizTransf.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Fuzz;

namespace {

template <typename Real>
void CheckSame(const char* name, const Real* answered, const Real* expected, std::size_t count) {
    if (!Same(answered, expected, count)) {
        Fail(std::string(name) + " answered" + Shown(answered, count) + ", expected" +
             Shown(expected, count));
    }
}

template <typename Real>
void CheckSame(const char* name, Real answered, Real expected) {
    CheckSame(name, &answered, &expected, 1);
}

void CheckSame(const char* name, bool answered, bool expected) {
    Check(answered == expected, name);
}

/// Whether the call throws what Normalize() throws; anything else thrown is a finding.
template <typename Call>
bool Throws(const Call& call) {
    try {
        call();
    } catch (const std::invalid_argument& error) {
        Check(std::string(error.what()) == "Invalid argument in Normalize()", "text of the error");
        return true;
    }
    return false;
}

template <typename Real>
struct Triple {
    Real at[3];
};

using Vector = Triple<float>;

Vector NextVector(Numbers<float>& numbers) {
    Vector vector{};
    numbers.Fill(vector.at, 3);
    return vector;
}

int AnyCount(Input& input) {
    return input.Flag() ? input.Any<std::int8_t>() : input.Any<std::int32_t>();
}

// --- vectors ------------------------------------------------------------------------------------

void Sums(Input& input, Numbers<float>& numbers) {
    const Vector a = NextVector(numbers);
    const Vector b = NextVector(numbers);
    CheckSame("Length", KesVizCore::Length(a.at), Reference::Length(a.at));

    // The result may stand in a place of its own or in that of either operand.
    Vector places[3] = {a, b, {}};
    float* const out = places[input.Below(3)].at;
    const bool adds = input.Flag();
    float* const returned = adds ? KesVizCore::Add(places[0].at, places[1].at, out)
                                 : KesVizCore::Subtract(places[0].at, places[1].at, out);
    Check(returned == out, "Add and Subtract return out");
    for (int i = 0; i < 3; ++i) {
        CheckSame("Add or Subtract", out[i], adds ? a.at[i] + b.at[i] : a.at[i] - b.at[i]);
    }

    const float factor = numbers.Next();
    Vector negated = a;
    Vector scaled = a;
    Vector cleared = a;
    Check(KesVizCore::Negate(negated.at) == negated.at, "Negate returns v");
    Check(KesVizCore::Multiply(scaled.at, factor) == scaled.at, "Multiply returns v");
    KesVizCore::ClearVector(cleared.at);
    for (int i = 0; i < 3; ++i) {
        CheckSame("Negate", negated.at[i], -a.at[i]);
        CheckSame("Multiply", scaled.at[i], a.at[i] * factor);
        CheckSame("ClearVector", cleared.at[i], 0.0F);
    }
}

void Comparisons(Input& input, Numbers<float>& numbers) {
    const Vector a = NextVector(numbers);
    const Vector b = NextVector(numbers);
    const int digits = AnyCount(input);
    bool allClose = true;
    bool allCloseByDigits = true;
    bool allOpposite = true;
    for (int i = 0; i < 3; ++i) {
        const float x = a.at[i];
        const float y = b.at[i];
        CheckSame("Round", KesVizCore::Round(x, digits), Reference::Round(x, digits));
        const bool close = Reference::AreClose(x, y);
        const bool closeByDigits = Reference::AreClose(x, y, digits);
        CheckSame("AreClose of floats", KesVizCore::AreClose(x, y), close);
        CheckSame("AreClose by digits", KesVizCore::AreClose(x, y, digits), closeByDigits);
        allClose = allClose && close;
        allCloseByDigits = allCloseByDigits && closeByDigits;
        allOpposite = allOpposite && Reference::AreClose(x, -y);
    }
    CheckSame("AreClose of vectors", KesVizCore::AreClose(a.at, b.at), allClose);
    CheckSame("AreClose of vectors by digits", KesVizCore::AreClose(a.at, b.at, digits),
              allCloseByDigits);
    CheckSame("AreOpposite", KesVizCore::AreOpposite(a.at, b.at), allOpposite);
}

template <typename Real>
void Normalizing(Numbers<Real>& numbers) {
    Triple<Real> given;
    numbers.Fill(given.at, 3);
    Triple<Real> answered = given;
    Triple<Real> expected = given;
    CheckSame("Length", KesVizCore::Length(given.at), Reference::Length(given.at));
    const bool thrown = Throws(
        [&] { Check(KesVizCore::Normalize(answered.at) == answered.at, "Normalize returns v"); });
    CheckSame("Normalize throws", thrown, !Reference::Normalize(expected.at));
    CheckSame("Normalize", answered.at, expected.at, 3);
}

void Products(Numbers<float>& numbers) {
    const Vector a = NextVector(numbers);
    const Vector b = NextVector(numbers);
    const Vector n = NextVector(numbers);
    CheckSame("DotProduct", KesVizCore::DotProduct(a.at, b.at), Reference::DotProduct(a.at, b.at));
    Vector answered;
    Vector expected;
    Check(KesVizCore::CrossProduct(a.at, b.at, answered.at) == answered.at, "returns out");
    Reference::CrossProduct(a.at, b.at, expected.at);
    CheckSame("CrossProduct", answered.at, expected.at, 3);

    float angle = 0;
    float expectedAngle = 0;
    bool known = Reference::GetAngleRadians(a.at, b.at, expectedAngle);
    bool thrown = Throws([&] { angle = KesVizCore::GetAngleRadians(a.at, b.at); });
    CheckSame("GetAngleRadians throws", thrown, !known);
    if (!known) {
        return;
    }
    CheckSame("GetAngleRadians", angle, expectedAngle);
    CheckSame("GetAngleDegrees", KesVizCore::GetAngleDegrees(a.at, b.at),
              Reference::DegreesFromRadians(expectedAngle));
    Reference::GetAngleRadians(a.at, b.at, n.at, expectedAngle);
    CheckSame("signed GetAngleRadians", KesVizCore::GetAngleRadians(a.at, b.at, n.at),
              expectedAngle);
    CheckSame("signed GetAngleDegrees", KesVizCore::GetAngleDegrees(a.at, b.at, n.at),
              Reference::DegreesFromRadians(expectedAngle));
}

void Rotations(Input& input, Numbers<float>& numbers, Numbers<double>& doubles) {
    Vector p = NextVector(numbers);
    Vector center = NextVector(numbers);
    Vector axis = NextVector(numbers);
    if (input.Flag()) {
        Reference::Normalize(axis.at);
    }
    const double angle = input.Flag() ? double{numbers.Next()} : doubles.Next();
    Vector expected;
    Vector apart;
    float* const out = input.Flag() ? apart.at : p.at;
    switch (input.Below(3)) {
        case 0:
            Reference::RotatePoint(p.at, angle, center.at, axis.at, expected.at);
            KesVizCore::RotatePoint(p.at, angle, center.at, axis.at, out);
            return CheckSame("RotatePoint", out, expected.at, 3);
        case 1:
            Reference::RotatePointRadians(p.at, angle, center.at, axis.at, expected.at);
            KesVizCore::RotatePointRadians(p.at, angle, center.at, axis.at, out);
            return CheckSame("RotatePointRadians", out, expected.at, 3);
        default:
            Reference::RotatePointAroundOrigin(p.at, angle, axis.at, expected.at);
            KesVizCore::RotatePointAroundOrigin(p.at, angle, axis.at, out);
            return CheckSame("RotatePointAroundOrigin", out, expected.at, 3);
    }
}

float RadiansOf(float degrees) {
    return degrees * 0.017453292F;
}

double RadiansOf(double degrees) {
    return degrees * 0.017453292519943295;
}

template <typename Real>
void Matrices(Input& input, Numbers<Real>& numbers) {
    Triple<Real> axis;
    numbers.Fill(axis.at, 3);
    Triple<Real> expectedAxis = axis;
    const Real angle = numbers.Next();
    const bool inDegrees = input.Flag();
    Real answered[16] = {};
    Real expected[16] = {};
    const bool thrown = Throws([&] {
        inDegrees ? KesVizCore::CreateRotationMatrixDegrees(axis.at, angle, answered)
                  : KesVizCore::CreateRotationMatrixRadians(axis.at, angle, answered);
    });
    const bool made = Reference::CreateRotationMatrixRadians(
        expectedAxis.at, inDegrees ? RadiansOf(angle) : angle, expected);
    CheckSame("CreateRotationMatrix throws", thrown, !made);
    CheckSame("CreateRotationMatrix", answered, expected, 16);
    CheckSame("axis of CreateRotationMatrix", axis.at, expectedAxis.at, 3);

    Triple<Real> p;
    numbers.Fill(p.at, 3);
    if (input.Flag()) {
        numbers.Fill(answered, 16);
    }
    Triple<Real> apart;
    Triple<Real> expectedPoint;
    Real* const out = input.Flag() ? apart.at : p.at;
    Reference::MatrixMultiplyPoint(p.at, answered, expectedPoint.at);
    KesVizCore::MatrixMultiplyPoint(p.at, answered, out);
    CheckSame("MatrixMultiplyPoint", out, expectedPoint.at, 3);
}

void Centers(Input& input, Numbers<float>& numbers) {
    std::vector<float> coords(input.Below(16));
    numbers.Fill(coords.data(), coords.size());
    const int count = static_cast<int>(coords.size() / 3);
    Vector answered;
    Vector expected;
    Reference::GetCenter(expected.at, count, coords.data());
    KesVizCore::GetCenter(answered.at, coords);
    CheckSame("GetCenter of a list", answered.at, expected.at, 3);

    const int asked = std::min(AnyCount(input), count);
    Reference::GetCenter(expected.at, asked, coords.data());
    KesVizCore::GetCenter(answered.at, asked, coords.data());
    CheckSame("GetCenter of an array", answered.at, expected.at, 3);
}

// --- rays ---------------------------------------------------------------------------------------

void RaysOfPixels(Input& input, Numbers<float>& numbers) {
    Reference::Viewport viewport;
    viewport.x = AnyCount(input);
    viewport.y = AnyCount(input);
    viewport.width = AnyCount(input);
    viewport.height = AnyCount(input);
    viewport.viewWidth = numbers.Next();
    viewport.viewHeight = numbers.Next();
    viewport.perspective = input.Flag();
    Vector eye = NextVector(numbers);
    Vector target = NextVector(numbers);
    Vector up = NextVector(numbers);
    Vector root = NextVector(numbers);
    Vector direction = root;
    Vector expectedRoot = root;
    Vector expectedDirection = root;
    const bool thrown = Throws([&] {
        KesVizCore::GetRayVector(viewport.x, viewport.y, viewport.width, viewport.height, eye.at,
                                 target.at, up.at, viewport.viewWidth, viewport.viewHeight,
                                 viewport.perspective, root.at, direction.at);
    });
    const bool made = Reference::GetRayVector(viewport, eye.at, target.at, up.at, expectedRoot.at,
                                              expectedDirection.at);
    CheckSame("GetRayVector throws", thrown, !made);
    CheckSame("root of GetRayVector", root.at, expectedRoot.at, 3);
    CheckSame("direction of GetRayVector", direction.at, expectedDirection.at, 3);
}

/// Everything that a hit test reads and writes, for the library and for the reference apart.
struct HitTest {
    Vector p0, p1, p2, root, direction, apart;
    float distance;
    bool edgeOn;
};

HitTest NextHitTest(Input& input, Numbers<float>& numbers) {
    HitTest test;
    test.p0 = NextVector(numbers);
    test.p1 = NextVector(numbers);
    test.p2 = NextVector(numbers);
    test.root = NextVector(numbers);
    test.direction = NextVector(numbers);
    test.apart = test.direction;
    test.distance = numbers.Next();
    test.edgeOn = input.Flag();

    // A ray that is aimed: at, or from, a point of the plane of the triangle.
    const unsigned aim = input.Below(4);
    if (aim != 0) {
        const float s = static_cast<float>(input.Any<std::int8_t>()) / 32.0F;
        const float t = static_cast<float>(input.Any<std::int8_t>()) / 32.0F;
        for (int i = 0; i < 3; ++i) {
            const float p0 = test.p0.at[i];
            const float inPlane = p0 + s * (test.p1.at[i] - p0) + t * (test.p2.at[i] - p0);
            if (aim == 1) {
                test.direction.at[i] = inPlane - test.root.at[i];
            } else {
                test.root.at[i] = inPlane;
            }
            if (aim == 3) {
                test.direction.at[i] = test.p1.at[i] - p0;
            }
        }
    }
    return test;
}

std::string Shown(const HitTest& test) {
    return "\n  p0" + Fuzz::Shown(test.p0.at, 3) + "\n  p1" + Fuzz::Shown(test.p1.at, 3) +
           "\n  p2" + Fuzz::Shown(test.p2.at, 3) + "\n  root" + Fuzz::Shown(test.root.at, 3) +
           "\n  direction" + Fuzz::Shown(test.direction.at, 3) + "\n  apart" +
           Fuzz::Shown(test.apart.at, 3) + "\n  distance" + Fuzz::Shown(&test.distance, 1) +
           (test.edgeOn ? "\n  edge on" : "\n  not edge on");
}

void CheckSame(const char* name, const HitTest& given, Reference::Answer answered,
               Reference::Answer expected, const HitTest& left, const HitTest& right) {
    const bool same = answered == expected && Same(left.root.at, right.root.at, 3) &&
                      Same(left.apart.at, right.apart.at, 3) && Same(left.p0.at, right.p0.at, 3) &&
                      Same(left.p1.at, right.p1.at, 3) && Same(left.p2.at, right.p2.at, 3) &&
                      Same(left.direction.at, right.direction.at, 3) &&
                      Same(left.distance, right.distance) && left.edgeOn == right.edgeOn;
    if (!same) {
        Fail(std::string(name) + " of" + Shown(given) + "\nanswered " + std::to_string(answered) +
             Shown(left) + "\nexpected " + std::to_string(expected) + Shown(right));
    }
}

void Triangles(Input& input, Numbers<float>& numbers) {
    const HitTest given = NextHitTest(input, numbers);
    const bool intoRoot = input.Flag();
    const bool asksEdgeOn = input.Flag();
    HitTest left = given;
    HitTest right = given;
    float* const hitPoint = intoRoot ? left.root.at : left.apart.at;
    bool hit = false;
    const bool thrown = Throws([&] {
        hit = asksEdgeOn
                  ? KesVizCore::RayHitsTriangle(left.p0.at, left.p1.at, left.p2.at, left.root.at,
                                                left.direction.at, hitPoint, left.distance,
                                                left.edgeOn)
                  : KesVizCore::RayHitsTriangle(left.p0.at, left.p1.at, left.p2.at, left.root.at,
                                                left.direction.at, hitPoint, left.distance);
    });
    const Reference::Answer expected =
        Reference::RayHitsTriangle(right.p0.at, right.p1.at, right.p2.at, right.root.at,
                                   right.direction.at, intoRoot ? right.root.at : right.apart.at,
                                   right.distance, asksEdgeOn ? &right.edgeOn : nullptr);
    const Reference::Answer answered = thrown ? Reference::Throws
                                       : hit  ? Reference::Hit
                                              : Reference::Miss;
    CheckSame("RayHitsTriangle", given, answered, expected, left, right);
}

void Segments(Input& input, Numbers<float>& numbers) {
    const HitTest given = NextHitTest(input, numbers);
    const float aperture = numbers.Next();
    const unsigned place = input.Below(4);
    HitTest left = given;
    HitTest right = given;
    float* const lefts[] = {left.apart.at, left.root.at, left.p0.at, left.p1.at};
    float* const rights[] = {right.apart.at, right.root.at, right.p0.at, right.p1.at};
    const bool hit = KesVizCore::RayHitsLineSegment(left.p0.at, left.p1.at, aperture, left.root.at,
                                                    left.direction.at, lefts[place], left.distance);
    const bool expected =
        Reference::RayHitsLineSegment(right.p0.at, right.p1.at, aperture, right.root.at,
                                      right.direction.at, rights[place], right.distance);
    CheckSame("RayHitsLineSegment", given, hit ? Reference::Hit : Reference::Miss,
              expected ? Reference::Hit : Reference::Miss, left, right);

    CheckSame("SameHalfSpace",
              KesVizCore::SameHalfSpace(given.p0.at, given.p1.at, given.p2.at, given.direction.at),
              Reference::SameHalfSpace(given.p0.at, given.p1.at, given.p2.at, given.direction.at));
}

void RayTexts(Input& input, Numbers<float>& numbers, Numbers<double>& doubles) {
    KesVizCore::Ray ray;
    if (input.Flag()) {
        const Vector root = NextVector(numbers);
        const Vector direction = NextVector(numbers);
        const double aperture = doubles.Next();
        ray = KesVizCore::Ray(root.at, direction.at, aperture);
        CheckSame("root of a ray", ray.Root, root.at, 3);
        CheckSame("direction of a ray", ray.Direction, direction.at, 3);
        CheckSame("aperture of a ray", ray.Aperture, aperture);
    } else {
        double given[6];
        doubles.Fill(given, 6);
        ray = KesVizCore::Ray(given, given + 3, given[0]);
        for (int i = 0; i < 3; ++i) {
            CheckSame("root of a ray of doubles", ray.Root[i], static_cast<float>(given[i]));
            CheckSame("direction of it", ray.Direction[i], static_cast<float>(given[i + 3]));
        }
    }
    char text[1024];
    const int length = std::snprintf(
        text, sizeof text,
        "Ray: Root = [%7.3f, %7.3f, %7.3f ]  Direction = [%7.3f, %7.3f, %7.3f ] Aperture = %5.3f",
        double{ray.Root[0]}, double{ray.Root[1]}, double{ray.Root[2]}, double{ray.Direction[0]},
        double{ray.Direction[1]}, double{ray.Direction[2]}, ray.Aperture);
    Check(length > 0 && length < static_cast<int>(sizeof text), "room for the text of a ray");
    Check(ray.ToString() == text, "text of a ray");
}

// --- boxes and transforms -----------------------------------------------------------------------

void CheckSame(const KesVizCore::VizBox& answered, const Reference::Box& expected) {
    double low[3];
    double high[3];
    double center[3];
    answered.GetLow(low);
    answered.GetHigh(high);
    answered.GetCenter(center);
    CheckSame("low corner of a box", low, expected.low, 3);
    CheckSame("high corner of a box", high, expected.high, 3);
    for (int i = 0; i < 3; ++i) {
        CheckSame("center of a box", center[i], 0.5 * (expected.low[i] + expected.high[i]));
    }
    CheckSame("box is empty", answered.IsEmpty(), expected.empty);
}

/// Two boxes that are filled, added to each other and to themselves, and scaled.
void Boxes(Input& input, Numbers<double>& doubles) {
    KesVizCore::VizBox boxes[2];
    Reference::Box expected[2];
    for (unsigned left = input.Below(12); left > 0; --left) {
        const unsigned which = input.Below(2);
        double numbers[6];
        switch (input.Below(4)) {
            case 0:
                doubles.Fill(numbers, 3);
                boxes[which].Add(numbers);
                expected[which].Add(numbers);
                break;
            case 1: {
                const unsigned added = input.Below(2);
                boxes[which].Add(boxes[added]);
                expected[which].Add(expected[added]);
                break;
            }
            case 2:
                doubles.Fill(numbers, 1);
                boxes[which].Scale(numbers[0]);
                expected[which].Scale(numbers[0]);
                break;
            default:
                doubles.Fill(numbers, 6);
                boxes[which] = KesVizCore::VizBox(numbers, numbers + 3);
                std::copy(numbers, numbers + 3, expected[which].low);
                std::copy(numbers + 3, numbers + 6, expected[which].high);
                expected[which].empty = false;
                break;
        }
        CheckSame(boxes[which], expected[which]);
    }
}

/// Each of the five ways to make a transform.
KesVizCore::VizTransf NextTransform(Input& input, Numbers<double>& doubles,
                                    Reference::Transform& expected) {
    const unsigned way = input.Below(5);
    double affine[3][3];
    double translation[3];
    if (way == 0) {
        return KesVizCore::VizTransf();
    }
    if (way == 1) {
        const double scale = doubles.Next();
        for (int i = 0; i < 3; ++i) {
            expected.affine[i][i] = scale;
        }
        expected.identity = scale == 1.0;
        return KesVizCore::VizTransf(scale);
    }
    if (way == 2 || way == 3) {
        doubles.Fill(translation, 3);
        std::copy(translation, translation + 3, expected.translation);
    }
    if (way == 2) {
        for (const double component : translation) {
            expected.identity = expected.identity && component == 0.0;
        }
        return KesVizCore::VizTransf(translation);
    }
    doubles.Fill(&affine[0][0], 9);
    std::copy(&affine[0][0], &affine[0][0] + 9, &expected.affine[0][0]);
    expected.identity = false;
    return way == 3 ? KesVizCore::VizTransf(affine, translation) : KesVizCore::VizTransf(affine);
}

void Transforms(Input& input, Numbers<double>& doubles) {
    Reference::Transform expected;
    const KesVizCore::VizTransf transform = NextTransform(input, doubles, expected);
    CheckSame("IsIdentity", transform.IsIdentity(), expected.identity);
    double affine[3][3];
    double translation[3];
    double array[16];
    transform.GetAffine(affine);
    transform.GetTranslation(translation);
    transform.AsArray(array);
    CheckSame("GetAffine", &affine[0][0], &expected.affine[0][0], 9);
    CheckSame("GetTranslation", translation, expected.translation, 3);
    double expectedArray[16] = {};
    for (int i = 0; i < 3; ++i) {
        std::copy(expected.affine[i], expected.affine[i] + 3, expectedArray + 4 * i);
        expectedArray[12 + i] = expected.translation[i];
    }
    expectedArray[15] = 1.0;
    CheckSame("AsArray", array, expectedArray, 16);

    Reference::Box box;
    KesVizCore::VizBox given;
    if (input.Flag()) {
        doubles.Fill(box.low, 3);
        doubles.Fill(box.high, 3);
        box.empty = false;
        given = KesVizCore::VizBox(box.low, box.high);
    }
    CheckSame(transform * given, expected.Applied(box));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Numbers<float> numbers(input);
    Numbers<double> doubles(input);
    while (!input.IsAtEnd()) {
        switch (input.Below(16)) {
            case 0:
                Sums(input, numbers);
                break;
            case 1:
                Comparisons(input, numbers);
                break;
            case 2:
                Normalizing(numbers);
                break;
            case 3:
                Normalizing(doubles);
                break;
            case 4:
                Products(numbers);
                break;
            case 5:
                Rotations(input, numbers, doubles);
                break;
            case 6:
                Matrices(input, numbers);
                break;
            case 7:
                Matrices(input, doubles);
                break;
            case 8:
                Centers(input, numbers);
                break;
            case 9:
                RaysOfPixels(input, numbers);
                break;
            case 10:
            case 11:
                Triangles(input, numbers);
                break;
            case 12:
                Segments(input, numbers);
                break;
            case 13:
                RayTexts(input, numbers, doubles);
                break;
            case 14:
                Boxes(input, doubles);
                break;
            default:
                Transforms(input, doubles);
                break;
        }
    }
    return 0;
}
