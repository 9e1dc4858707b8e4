#include "Floats.h"
#include "report/ForeignLocale.h"

#include <KesVizCore/math/Ray.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace KesVizCore {
namespace {

void expectSame(const Ray& ray, const Vector& root, const Vector& direction, double aperture) {
    EXPECT_EQ(bitsOf(Vector{ray.Root[0], ray.Root[1], ray.Root[2]}), bitsOf(root));
    EXPECT_EQ(bitsOf(Vector{ray.Direction[0], ray.Direction[1], ray.Direction[2]}),
              bitsOf(direction));
    EXPECT_EQ(ray.Aperture, aperture);
}

TEST(RayTest, IsAllZeroAtFirst) {
    expectSame(Ray(), Vector{}, Vector{}, 0.0);
}

TEST(RayTest, CopiesFloatsAsTheyAre) {
    const Vector root = {1.0F, -0.0F, 3.0F};
    const Vector direction = {0.1F, 1e-30F, -1.0F};
    expectSame(Ray(root.data(), direction.data(), 0.1), root, direction, 0.1);
}

TEST(RayTest, RoundsDoublesToFloatsAndKeepsTheApertureDouble) {
    const DoubleVector root = {0.1, 16777217.0, -0.3};
    const DoubleVector direction = {0.7, 1e-50, -1.0};
    expectSame(Ray(root.data(), direction.data(), 0.1), {0.1F, 16777216.0F, -0.3F},
               {0.7F, 0.0F, -1.0F}, 0.1);
}

TEST(RayTest, KeepsNoPointerToItsArguments) {
    Vector root = {1.0F, 2.0F, 3.0F};
    Vector direction = {4.0F, 5.0F, 6.0F};
    double aperture = 0.5;
    const Ray ray(root.data(), direction.data(), aperture);
    root.fill(9.0F);
    direction.fill(9.0F);
    aperture = 9.0;
    expectSame(ray, {1.0F, 2.0F, 3.0F}, {4.0F, 5.0F, 6.0F}, 0.5);
}

TEST(RayTest, CopyHoldsTheSameSevenNumbers) {
    const Vector root = {1.0F, 2.0F, 3.0F};
    const Vector direction = {4.0F, 5.0F, 6.0F};
    const Ray ray(root.data(), direction.data(), 0.7);
    const Ray copy(ray);
    expectSame(copy, root, direction, 0.7);
}

TEST(RayTest, AssignmentCopiesAllSevenNumbers) {
    const Vector root = {1.0F, 2.0F, 3.0F};
    const Vector direction = {4.0F, 5.0F, 6.0F};
    const Ray ray(root.data(), direction.data(), 0.7);
    Ray other;
    other = ray;
    expectSame(other, root, direction, 0.7);
}

TEST(RayTest, AssignmentToItselfChangesNothing) {
    const Vector root = {1.0F, 2.0F, 3.0F};
    const Vector direction = {4.0F, 5.0F, 6.0F};
    Ray ray(root.data(), direction.data(), 0.7);
    const Ray& same = ray;
    ray = same;
    expectSame(ray, root, direction, 0.7);
}

TEST(RayTest, AssignmentReturnsNothing) {
    EXPECT_TRUE(
        (std::is_same_v<decltype(std::declval<Ray&>() = std::declval<const Ray&>()), void>));
}

TEST(RayTest, TextHoldsAllSevenNumbers) {
    const Vector root = {1.0F, 2.0F, 3.0F};
    const Vector direction = {0.0F, 0.0F, -1.0F};
    EXPECT_EQ(Ray(root.data(), direction.data(), 0.5).ToString(),
              "Ray: Root = [  1.000,   2.000,   3.000 ]"
              "  Direction = [  0.000,   0.000,  -1.000 ] Aperture = 0.500");
}

TEST(RayTest, TextRoundsToThreePlaces) {
    const Vector root = {1.23456F, -1234.5678F, 0.0004F};
    const Vector direction = {0.5F, 0.25F, 0.125F};
    EXPECT_EQ(Ray(root.data(), direction.data(), 12.34567).ToString(),
              "Ray: Root = [  1.235, -1234.568,   0.000 ]"
              "  Direction = [  0.500,   0.250,   0.125 ] Aperture = 12.346");
}

TEST(RayTest, TextHasPointsInAForeignLocale) {
    const support::ForeignLocale locale;
    const Vector v = {1234.5F, 0.25F, -8.0F};
    EXPECT_EQ(Ray(v.data(), v.data(), 0.5).ToString(),
              "Ray: Root = [1234.500,   0.250,  -8.000 ]"
              "  Direction = [1234.500,   0.250,  -8.000 ] Aperture = 0.500");
}

TEST(RayTest, TextIsNotCutForTheLargestNumbers) {
    const float largest = std::numeric_limits<float>::max();
    const Vector v = {largest, -largest, largest};
    const std::string number = "340282346638528859811704183484516925440.000";
    const std::string array = "[" + number + ", -" + number + ", " + number + " ]";
    const std::string text = Ray(v.data(), v.data(), std::numeric_limits<double>::max()).ToString();
    const std::string aperture = text.substr(text.rfind(' ') + 1);
    EXPECT_EQ(text, "Ray: Root = " + array + "  Direction = " + array + " Aperture = " + aperture);
    EXPECT_EQ(aperture.size(), 309U + 4U);
    EXPECT_EQ(aperture.substr(0, 5), "17976");
}

}  // namespace
}  // namespace KesVizCore
