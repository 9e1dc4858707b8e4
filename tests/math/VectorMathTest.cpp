#include "Floats.h"

#include <KesVizCore/math/VectorMath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using ::testing::PrintToString;

constexpr float kSmallest = 1e-7F;       // what is below counts as zero
constexpr float kBelowPi = 3.1415925F;   // 0x40490FDA
constexpr long double kUnit = 0x1p-24L;  // half a unit in the last place, relative
constexpr long double kPiExactly = 3.14159265358979323846264338327950288L;
constexpr int kRounds = 2000;

template <typename Values>
std::string lengthError(Values v) {
    try {
        Normalize(v.data());
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "no exception";
}

Vector normalized(Vector v) {
    Normalize(v.data());
    return v;
}

DoubleVector normalized(DoubleVector v) {
    Normalize(v.data());
    return v;
}

// Length

TEST(VectorMathTest, LengthOfThreeFourZeroIsFive) {
    const Vector v = {3.0F, -4.0F, 0.0F};
    const DoubleVector w = {0.0, 3.0, -4.0};
    EXPECT_EQ(Length(v.data()), 5.0F);
    EXPECT_EQ(Length(w.data()), 5.0);
}

TEST(VectorMathTest, LengthSquaresFloatsInDoubleWhereFloatsWouldOverflowOrVanish) {
    const Vector huge = {3e30F, 0.0F, 4e30F};
    const Vector tiny = {3e-30F, 4e-30F, 0.0F};
    EXPECT_EQ(Length(huge.data()), 5e30F);
    EXPECT_EQ(Length(tiny.data()), 5e-30F);
}

TEST(VectorMathTest, LengthBeyondTheRangeOfFloatIsInfinite) {
    const float largest = std::numeric_limits<float>::max();
    const Vector v = {largest, largest, 0.0F};
    EXPECT_EQ(Length(v.data()), kInfinity);
}

TEST(VectorMathTest, LengthOfDoublesIsInfiniteOnceTheirSquaresAre) {
    const DoubleVector v = {1e160, 0.0, 0.0};
    EXPECT_EQ(Length(v.data()), std::numeric_limits<double>::infinity());
}

TEST(VectorMathTest, LengthOfNaNIsNaN) {
    const Vector v = {1.0F, kNaN, 0.0F};
    EXPECT_TRUE(std::isnan(Length(v.data())));
}

TEST(VectorMathTest, LengthIsTheExactOneRounded) {
    SeededNumbers numbers(101);
    for (int round = 0; round < kRounds; ++round) {
        const Vector v = numbers.VectorWithin(1000.0);
        SCOPED_TRACE(PrintToString(v));
        const long double exact = length(widened(v));
        // Half a unit for the float, a few units of the double before it.
        EXPECT_LE(std::fabs(Length(v.data()) - exact), exact * (kUnit + 0x1p-50L));

        const DoubleVector w = {v[0] * 1.1, v[1] * 1.3, v[2] * 1.7};
        const long double exactOfDoubles = length({w[0], w[1], w[2]});
        // Three squares, two sums and a root, at most half a unit each.
        EXPECT_LE(std::fabs(Length(w.data()) - exactOfDoubles), exactOfDoubles * 0x1p-51L);
    }
}

// Add, Subtract

TEST(VectorMathTest, AddWritesTheSumAndReturnsIt) {
    const Vector a = {1.0F, 2.0F, 3.0F};
    const Vector b = {0.5F, -2.0F, 16777216.0F};
    Vector out = {};
    EXPECT_EQ(Add(a.data(), b.data(), out.data()), out.data());
    EXPECT_EQ(out, (Vector{1.5F, 0.0F, 16777220.0F}));  // 16777219 is no float
}

TEST(VectorMathTest, AddMayWriteIntoEitherSummand) {
    Vector a = {1.0F, 2.0F, 3.0F};
    Vector b = {10.0F, 20.0F, 30.0F};
    Add(a.data(), b.data(), a.data());
    EXPECT_EQ(a, (Vector{11.0F, 22.0F, 33.0F}));
    Add(a.data(), b.data(), b.data());
    EXPECT_EQ(b, (Vector{21.0F, 42.0F, 63.0F}));
}

TEST(VectorMathTest, SubtractWritesTheDifferenceAndReturnsIt) {
    const Vector a = {1.0F, 2.0F, 16777216.0F};
    const Vector b = {0.5F, -2.0F, -3.0F};
    Vector out = {};
    EXPECT_EQ(Subtract(a.data(), b.data(), out.data()), out.data());
    EXPECT_EQ(out, (Vector{0.5F, 4.0F, 16777220.0F}));
}

TEST(VectorMathTest, SubtractMayWriteIntoEitherArgument) {
    Vector a = {1.0F, 2.0F, 3.0F};
    Vector b = {10.0F, 20.0F, 30.0F};
    Subtract(a.data(), b.data(), a.data());
    EXPECT_EQ(a, (Vector{-9.0F, -18.0F, -27.0F}));
    Subtract(a.data(), b.data(), b.data());
    EXPECT_EQ(b, (Vector{-19.0F, -38.0F, -57.0F}));
}

// Round

TEST(VectorMathTest, RoundKeepsSoManyDecimalPlaces) {
    EXPECT_EQ(Round(1.2345F, 3), 1.235F);  // the float lies above the half
    EXPECT_EQ(Round(1.2344F, 3), 1.234F);
    EXPECT_EQ(Round(-1.2346F, 3), -1.235F);
    EXPECT_EQ(Round(2.7F, 0), 3.0F);
}

TEST(VectorMathTest, RoundTakesHalvesTowardPositiveInfinity) {
    EXPECT_EQ(Round(2.5F, 0), 3.0F);
    EXPECT_EQ(Round(-2.5F, 0), -2.0F);
    EXPECT_EQ(Round(0.125F, 2), 0.13F);
    EXPECT_EQ(Round(-0.125F, 2), -0.12F);
}

TEST(VectorMathTest, RoundWithNegativeDigitsRoundsToTensAndHundreds) {
    EXPECT_EQ(Round(1250.0F, -2), 1300.0F);
    EXPECT_EQ(Round(1249.0F, -2), 1200.0F);
    EXPECT_EQ(Round(-14.0F, -1), -10.0F);
}

TEST(VectorMathTest, RoundWorksInDouble) {
    EXPECT_EQ(Round(8388609.0F, 0), 8388609.0F);  // with a half added it is no float
    EXPECT_EQ(Round(3.25F, 12), 3.25F);           // nor is the product
    EXPECT_EQ(Round(1e38F, 3), 1e38F);            // which a float could not hold
}

TEST(VectorMathTest, RoundOfWhatHasNoRoundingIsNaN) {
    EXPECT_TRUE(std::isnan(Round(kNaN, 2)));
    EXPECT_TRUE(std::isnan(Round(1.0F, 400)));  // infinity divided by infinity
    EXPECT_EQ(Round(kInfinity, 2), kInfinity);
}

// AreClose, AreOpposite

TEST(VectorMathTest, AreCloseWithDigitsComparesTheRoundedValues) {
    EXPECT_TRUE(AreClose(1.2345F, 1.2349F, 3));
    EXPECT_FALSE(AreClose(1.2344F, 1.2356F, 3));
}

TEST(VectorMathTest, AreCloseWithDigitsTellsNeighboursOnBothSidesOfAHalfApart) {
    EXPECT_FALSE(AreClose(justBelow(2.5F), 2.5F, 0));
    EXPECT_TRUE(AreClose(2.5F, 3.25F, 0));
    EXPECT_FALSE(AreClose(justBelow(-2.5F), -2.5F, 0));
}

TEST(VectorMathTest, AreCloseWithDigitsIsFalseWhereARoundedValueIsNaN) {
    EXPECT_FALSE(AreClose(kNaN, kNaN, 3));
    EXPECT_FALSE(AreClose(kNaN, 1.0F, 3));
    EXPECT_FALSE(AreClose(1.0F, kNaN, 3));
    EXPECT_FALSE(AreClose(1.0F, 1.0F, 400));
}

TEST(VectorMathTest, AreCloseWithDigitsLooksAtEveryComponent) {
    const Vector a = {1.2345F, 2.0F, 3.0F};
    EXPECT_TRUE(AreClose(a.data(), Vector{1.2349F, 2.0001F, 3.0001F}.data(), 3));
    EXPECT_FALSE(AreClose(a.data(), Vector{1.2359F, 2.0F, 3.0F}.data(), 3));
    EXPECT_FALSE(AreClose(a.data(), Vector{1.2345F, 2.001F, 3.0F}.data(), 3));
    EXPECT_FALSE(AreClose(a.data(), Vector{1.2345F, 2.0F, 3.001F}.data(), 3));
    EXPECT_TRUE(AreClose(a.data(), Vector{1.2359F, 2.001F, 3.001F}.data(), 1));
}

TEST(VectorMathTest, AreCloseNearZeroToleratesAboutAMillionth) {
    EXPECT_TRUE(AreClose(0.0F, 9e-7F));
    EXPECT_FALSE(AreClose(0.0F, 1.1e-6F));
    EXPECT_TRUE(AreClose(-4e-7F, 5e-7F));
}

TEST(VectorMathTest, AreCloseOfLargeNumbersIsRelative) {
    EXPECT_TRUE(AreClose(1e6F, 1e6F + 0.1F));
    EXPECT_FALSE(AreClose(1e6F, 1e6F + 0.5F));
}

TEST(VectorMathTest, AreCloseExcludesTheToleranceItself) {
    const float tolerance = 0x1.0c6f7cp-20F;  // (0 + b + 10) * 1e-7 for every b this small
    EXPECT_TRUE(AreClose(0.0F, justBelow(tolerance)));
    EXPECT_FALSE(AreClose(0.0F, tolerance));
    EXPECT_FALSE(AreClose(0.0F, justAbove(tolerance)));
    EXPECT_TRUE(AreClose(-justBelow(tolerance), 0.0F));
    EXPECT_FALSE(AreClose(-tolerance, 0.0F));
}

TEST(VectorMathTest, AreCloseRoundsEveryStepToAFloat) {
    SeededNumbers numbers(102);
    int close = 0;
    for (int round = 0; round < kRounds; ++round) {
        const float a = numbers.FloatBetween(-100.0, 100.0);
        const float b = a + numbers.FloatBetween(-4e-5, 4e-5);
        SCOPED_TRACE(PrintToString(a) + " " + PrintToString(b));
        const Rounded bound = (Rounded(std::fabs(a)) + std::fabs(b) + 10.0F) * 1e-7F;
        const bool expected = a == b || bound.Value() > std::fabs((Rounded(a) - b).Value());
        EXPECT_EQ(AreClose(a, b), expected);
        close += expected ? 1 : 0;
    }
    EXPECT_GT(close, kRounds / 10);
    EXPECT_LT(close, kRounds * 9 / 10);
}

TEST(VectorMathTest, AreCloseTakesEqualValuesWhateverTheyAre) {
    EXPECT_TRUE(AreClose(kInfinity, kInfinity));
    EXPECT_TRUE(AreClose(-kInfinity, -kInfinity));
    EXPECT_TRUE(AreClose(0.0F, -0.0F));
    EXPECT_TRUE(AreClose(3e38F, 3e38F));
}

TEST(VectorMathTest, AreCloseIsFalseForInfinityBesideAnythingElse) {
    EXPECT_FALSE(AreClose(kInfinity, -kInfinity));
    EXPECT_FALSE(AreClose(kInfinity, 3e38F));
}

TEST(VectorMathTest, AreCloseIsFalseForNaN) {
    EXPECT_FALSE(AreClose(kNaN, kNaN));
    EXPECT_FALSE(AreClose(kNaN, 0.0F));
    EXPECT_FALSE(AreClose(0.0F, kNaN));
}

TEST(VectorMathTest, AreCloseLooksAtEveryComponent) {
    const Vector a = {0.0F, 1.0F, -2.0F};
    EXPECT_TRUE(AreClose(a.data(), Vector{9e-7F, 1.0000005F, -2.0000005F}.data()));
    EXPECT_FALSE(AreClose(a.data(), Vector{1e-5F, 1.0F, -2.0F}.data()));
    EXPECT_FALSE(AreClose(a.data(), Vector{0.0F, 1.00001F, -2.0F}.data()));
    EXPECT_FALSE(AreClose(a.data(), Vector{0.0F, 1.0F, -2.00001F}.data()));
}

TEST(VectorMathTest, AreOppositeComparesWithTheNegatedVector) {
    const Vector a = {3.0F, 1.0F, -2.0F};
    EXPECT_TRUE(AreOpposite(a.data(), Vector{-3.0000005F, -1.0000005F, 2.0000005F}.data()));
    EXPECT_FALSE(AreOpposite(a.data(), a.data()));
}

TEST(VectorMathTest, AreOppositeLooksAtEveryComponent) {
    const Vector a = {3.0F, 1.0F, -2.0F};
    EXPECT_FALSE(AreOpposite(a.data(), Vector{-3.00001F, -1.0F, 2.0F}.data()));
    EXPECT_FALSE(AreOpposite(a.data(), Vector{-3.0F, -1.00001F, 2.0F}.data()));
    EXPECT_FALSE(AreOpposite(a.data(), Vector{-3.0F, -1.0F, 2.00001F}.data()));
    EXPECT_FALSE(AreOpposite(a.data(), Vector{-3.0F, -1.0F, kNaN}.data()));
}

TEST(VectorMathTest, ZeroVectorsAreOpposite) {
    const Vector zero = {};
    EXPECT_TRUE(AreOpposite(zero.data(), zero.data()));
}

// Negate, ClearVector, Multiply

TEST(VectorMathTest, NegateTurnsEveryComponentAndReturnsTheVector) {
    Vector v = {1.0F, -2.0F, 0.0F};
    EXPECT_EQ(Negate(v.data()), v.data());
    EXPECT_EQ(bitsOf(v), bitsOf(Vector{-1.0F, 2.0F, -0.0F}));
}

TEST(VectorMathTest, ClearVectorSetsThreeZerosAndNoMore) {
    std::array<float, 4> v = {1.0F, kNaN, -3.0F, 4.0F};
    ClearVector(v.data());
    EXPECT_EQ(v, (std::array<float, 4>{0.0F, 0.0F, 0.0F, 4.0F}));
}

TEST(VectorMathTest, MultiplyScalesEveryComponentAndReturnsTheVector) {
    Vector v = {1.0F, -2.0F, 0.5F};
    EXPECT_EQ(Multiply(v.data(), -3.0F), v.data());
    EXPECT_EQ(v, (Vector{-3.0F, 6.0F, -1.5F}));
}

TEST(VectorMathTest, MultiplyRoundsToAFloat) {
    Vector v = {0.1F, 1e38F, 1e-38F};
    Multiply(v.data(), 10.1F);
    EXPECT_EQ(v[0], (Rounded(0.1F) * 10.1F).Value());
    EXPECT_EQ(v[1], kInfinity);
    EXPECT_EQ(v[2], (Rounded(1e-38F) * 10.1F).Value());
}

// Normalize

TEST(VectorMathTest, NormalizeOfThreeFourZeroIsExact) {
    EXPECT_EQ(bitsOf(normalized(Vector{3.0F, 4.0F, 0.0F})), bitsOf(Vector{0.6F, 0.8F, 0.0F}));
}

TEST(VectorMathTest, NormalizeReturnsTheVector) {
    Vector v = {1.0F, 2.0F, 3.0F};
    DoubleVector w = {1.0, 2.0, 3.0};
    EXPECT_EQ(Normalize(v.data()), v.data());
    EXPECT_EQ(Normalize(w.data()), w.data());
}

TEST(VectorMathTest, NormalizeDropsAComponentTooSmallToCount) {
    EXPECT_EQ(bitsOf(normalized(Vector{5e-8F, 2.0F, 0.0F})), bitsOf(Vector{0.0F, 1.0F, 0.0F}));
}

TEST(VectorMathTest, NormalizeSnapsToANearbyAxis) {
    EXPECT_EQ(bitsOf(normalized(Vector{0.99999995F, 0.0001F, 0.0F})),
              bitsOf(Vector{1.0F, 0.0F, 0.0F}));
}

TEST(VectorMathTest, NormalizeThrowsWhenEveryComponentIsTooSmall) {
    EXPECT_EQ(lengthError(Vector{1e-8F, 1e-8F, 1e-8F}), "Invalid argument in Normalize()");
    EXPECT_EQ(lengthError(DoubleVector{1e-8, 1e-8, 1e-8}), "Invalid argument in Normalize()");
}

TEST(VectorMathTest, NormalizeThrowsForNaN) {
    EXPECT_EQ(lengthError(Vector{1.0F, kNaN, 0.0F}), "Invalid argument in Normalize()");
    EXPECT_EQ(lengthError(DoubleVector{1.0, 0.0, double{kNaN}}), "Invalid argument in Normalize()");
}

TEST(VectorMathTest, NormalizeThatThrowsLeavesZerosForTheComponentsBelowTheTolerance) {
    Vector v = {-1e-8F, kSmallest, -0.0F};
    EXPECT_THROW(Normalize(v.data()), std::invalid_argument);
    EXPECT_EQ(bitsOf(v), bitsOf(Vector{0.0F, kSmallest, 0.0F}));
}

TEST(VectorMathTest, NormalizeRefusesTheToleranceAsLengthAndTakesTheNextFloat) {
    EXPECT_EQ(lengthError(Vector{justBelow(kSmallest), 0.0F, 0.0F}),
              "Invalid argument in Normalize()");
    EXPECT_EQ(lengthError(Vector{kSmallest, 0.0F, 0.0F}), "Invalid argument in Normalize()");
    EXPECT_EQ(normalized(Vector{justAbove(kSmallest), 0.0F, 0.0F}), (Vector{1.0F, 0.0F, 0.0F}));
}

TEST(VectorMathTest, NormalizeOfDoublesRefusesTheSameFloatAsLength) {
    const double smallest = kSmallest;
    EXPECT_EQ(lengthError(DoubleVector{0.0, std::nextafter(smallest, 0.0), 0.0}),
              "Invalid argument in Normalize()");
    EXPECT_EQ(lengthError(DoubleVector{0.0, smallest, 0.0}), "Invalid argument in Normalize()");
    EXPECT_EQ(normalized(DoubleVector{0.0, std::nextafter(smallest, 1.0), 0.0}),
              (DoubleVector{0.0, 1.0, 0.0}));
}

TEST(VectorMathTest, NormalizeDropsBelowTheToleranceBeforeScaling) {
    // Scaled up first, the small component would be far from zero.
    EXPECT_EQ(normalized(Vector{justBelow(kSmallest), 1e-6F, 0.0F}), (Vector{0.0F, 1.0F, 0.0F}));
    EXPECT_EQ(normalized(Vector{-justBelow(kSmallest), 1e-6F, 0.0F}), (Vector{0.0F, 1.0F, 0.0F}));
    EXPECT_NEAR(normalized(Vector{kSmallest, 1e-6F, 0.0F})[0], 0.0995037F, 1e-6F);
    const double smallest = kSmallest;
    EXPECT_EQ(normalized(DoubleVector{std::nextafter(smallest, 0.0), 1e-6, 0.0}),
              (DoubleVector{0.0, 1.0, 0.0}));
    EXPECT_NEAR(normalized(DoubleVector{smallest, 1e-6, 0.0})[0], 0.0995037, 1e-6);
}

TEST(VectorMathTest, NormalizeDropsBelowTheToleranceAfterScaling) {
    const float becomesSmallest = 0x1.0c6f7ap-21F;
    ASSERT_EQ((Rounded(becomesSmallest) * 0.2F).Value(), kSmallest);
    EXPECT_EQ(normalized(Vector{becomesSmallest, 3.0F, 4.0F}),
              (Vector{kSmallest, (Rounded(3.0F) * 0.2F).Value(), 0.8F}));
    EXPECT_EQ(normalized(Vector{justBelow(becomesSmallest), 3.0F, 4.0F})[0], 0.0F);
    EXPECT_EQ(normalized(Vector{-becomesSmallest, 3.0F, 4.0F})[0], -kSmallest);
    EXPECT_EQ(normalized(Vector{justAbove(-becomesSmallest), 3.0F, 4.0F})[0], 0.0F);
}

TEST(VectorMathTest, NormalizeScalesOnceForComponentsDroppedBefore) {
    SeededNumbers numbers(122);
    int different = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Vector input = {numbers.FloatBetween(0.1, 0.3), numbers.FloatBetween(0.1, 0.3),
                              9.9e-8F};
        SCOPED_TRACE(PrintToString(input));
        const Vector kept = {input[0], input[1], 0.0F};
        const Rounded first = Rounded(1.0F) / Length(kept.data());
        const Vector pass1 = {(first * kept[0]).Value(), (first * kept[1]).Value(), 0.0F};
        const Rounded second = Rounded(1.0F) / Length(pass1.data());
        EXPECT_EQ(bitsOf(normalized(input)), bitsOf(pass1));
        different += (second * pass1[0]).Value() == pass1[0] ? 0 : 1;
    }
    EXPECT_GT(different, 0);  // or a second pass would not show
}

TEST(VectorMathTest, NormalizeRepeatsAfterDroppingAComponent) {
    SeededNumbers numbers(103);
    int different = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Vector input = {numbers.FloatBetween(10.0, 30.0), numbers.FloatBetween(10.0, 30.0),
                              numbers.FloatBetween(2e-7, 9e-7)};
        SCOPED_TRACE(PrintToString(input));
        const Rounded first = Rounded(1.0F) / Length(input.data());
        const Vector pass1 = {(first * input[0]).Value(), (first * input[1]).Value(), 0.0F};
        const Rounded second = Rounded(1.0F) / Length(pass1.data());
        const Vector pass2 = {(second * pass1[0]).Value(), (second * pass1[1]).Value(), 0.0F};
        EXPECT_EQ(bitsOf(normalized(input)), bitsOf(pass2));
        different += pass1 == pass2 ? 0 : 1;
    }
    EXPECT_GT(different, 0);  // or the second pass would not show
}

TEST(VectorMathTest, NormalizeSnapsStrictlyBetweenTheBounds) {
    // Both have length 1 as a float, so that nothing but the snapping can change them.
    const Vector atBound = {0.9999999F, 0x1p-11F, 0.0F};
    EXPECT_EQ(bitsOf(normalized(atBound)), bitsOf(atBound));
    EXPECT_EQ(normalized(Vector{justAbove(0.9999999F), 0x1.6a09e6p-12F, 0.0F}),
              (Vector{1.0F, 0.0F, 0.0F}));
}

TEST(VectorMathTest, NormalizeOfDoublesSnapsStrictlyAboveTheSameFloat) {
    const double bound = 0.9999999F;
    const DoubleVector atBound = {bound, 0x1.fffffeffffffcp-12, 0.0};
    EXPECT_EQ(normalized(atBound), atBound);
    EXPECT_EQ(normalized(DoubleVector{std::nextafter(bound, 1.0), 0x1.fffffefbffffcp-12, 0.0}),
              (DoubleVector{1.0, 0.0, 0.0}));
}

TEST(VectorMathTest, NormalizeSnapsToEachAxisWithTheSignOfTheComponent) {
    EXPECT_EQ(bitsOf(normalized(Vector{-5.0F, 0.0001F, -0.0001F})),
              bitsOf(Vector{-1.0F, 0.0F, 0.0F}));
    EXPECT_EQ(bitsOf(normalized(Vector{-0.0001F, 5.0F, -0.0001F})),
              bitsOf(Vector{0.0F, 1.0F, 0.0F}));
    EXPECT_EQ(bitsOf(normalized(Vector{-0.0001F, -5.0F, 0.0001F})),
              bitsOf(Vector{0.0F, -1.0F, 0.0F}));
    EXPECT_EQ(bitsOf(normalized(Vector{-0.0001F, 0.0001F, 5.0F})),
              bitsOf(Vector{0.0F, 0.0F, 1.0F}));
    EXPECT_EQ(normalized(DoubleVector{-0.0001, 0.0001, -5.0}), (DoubleVector{0.0, 0.0, -1.0}));
}

TEST(VectorMathTest, NormalizeMakesNegativeZerosPositive) {
    EXPECT_EQ(bitsOf(normalized(Vector{3.0F, -0.0F, 4.0F})), bitsOf(Vector{0.6F, 0.0F, 0.8F}));
}

TEST(VectorMathTest, NormalizeMultipliesByTheReciprocalOfTheLength) {
    SeededNumbers numbers(104);
    int different = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Vector input = numbers.VectorWithin(50.0);
        SCOPED_TRACE(PrintToString(input));
        const float size = Length(input.data());
        const Rounded factor = Rounded(1.0F) / size;
        const Vector expected = {(factor * input[0]).Value(), (factor * input[1]).Value(),
                                 (factor * input[2]).Value()};
        if (std::fabs(expected[0]) > 0.999F || std::fabs(expected[1]) > 0.999F ||
            std::fabs(expected[2]) > 0.999F) {
            continue;  // may be snapped
        }
        EXPECT_EQ(bitsOf(normalized(input)), bitsOf(expected));
        different += expected[0] == (Rounded(input[0]) / size).Value() ? 0 : 1;
    }
    EXPECT_GT(different, 0);  // dividing would give other bits
}

TEST(VectorMathTest, NormalizeOfDoublesKeepsDoublePrecision) {
    SeededNumbers numbers(105);
    for (int round = 0; round < kRounds; ++round) {
        const DoubleVector input = {numbers.Between(1.0, 9.0), numbers.Between(-9.0, -1.0),
                                    numbers.Between(1.0, 9.0)};
        SCOPED_TRACE(PrintToString(input));
        const long double size = length({input[0], input[1], input[2]});
        const DoubleVector unit = normalized(input);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(static_cast<double>(unit[i] - input[i] / size), 0.0, 4e-16);
        }
    }
}

TEST(VectorMathTest, NormalizeLeavesZerosWhereTheLengthOverflows) {
    const float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(bitsOf(normalized(Vector{largest, largest, 0.0F})), bitsOf(Vector{}));
    EXPECT_EQ(normalized(DoubleVector{1e160, 0.0, 0.0}), DoubleVector{});
}

TEST(VectorMathTest, NormalizeLeavesNaNForAnInfiniteComponent) {
    const Vector unit = normalized(Vector{kInfinity, 1.0F, 0.0F});
    EXPECT_TRUE(std::isnan(unit[0]));
    EXPECT_EQ(unit[1], 0.0F);
    EXPECT_EQ(unit[2], 0.0F);
}

TEST(VectorMathTest, NormalizeDoesNotSnapFromTheUpperBoundOn) {
    // 1 / length is so small here that it has lost the digits that would give 1.
    int atBound = 0;
    int beyond = 0;
    SeededNumbers numbers(106);
    for (int round = 0; round < kRounds; ++round) {
        const float size = numbers.FloatBetween(2e38, 3.4e38);
        SCOPED_TRACE(PrintToString(size));
        const float product = (Rounded(1.0F) / size * size).Value();
        const bool isBetween = product > 0.9999999F && product < 1.0000001F;
        EXPECT_EQ(normalized(Vector{size, 0.0F, 0.0F})[0], isBetween ? 1.0F : product);
        atBound += product == 1.0000001F ? 1 : 0;
        beyond += product > 1.0000001F ? 1 : 0;
    }
    EXPECT_GT(atBound, 0);
    EXPECT_GT(beyond, 0);
}

// DotProduct, CrossProduct

TEST(VectorMathTest, DotProductSumsTheProducts) {
    EXPECT_EQ(DotProduct(Vector{1.0F, 2.0F, 3.0F}.data(), Vector{4.0F, -5.0F, 6.0F}.data()), 12.0F);
}

TEST(VectorMathTest, DotProductBelowTheToleranceIsExactlyZero) {
    const Vector x = {1.0F, 0.0F, 0.0F};
    EXPECT_EQ(bitsOf(DotProduct(x.data(), Vector{5e-8F, 0.0F, 0.0F}.data())), bitsOf(0.0F));
    EXPECT_EQ(bitsOf(DotProduct(x.data(), Vector{-5e-8F, 0.0F, 0.0F}.data())), bitsOf(0.0F));
}

TEST(VectorMathTest, DotProductKeepsTheToleranceItself) {
    const Vector x = {1.0F, 0.0F, 0.0F};
    EXPECT_EQ(DotProduct(x.data(), Vector{justBelow(kSmallest), 0.0F, 0.0F}.data()), 0.0F);
    EXPECT_EQ(DotProduct(x.data(), Vector{kSmallest, 0.0F, 0.0F}.data()), kSmallest);
    EXPECT_EQ(DotProduct(x.data(), Vector{-kSmallest, 0.0F, 0.0F}.data()), -kSmallest);
    EXPECT_EQ(DotProduct(x.data(), Vector{-justBelow(kSmallest), 0.0F, 0.0F}.data()), 0.0F);
}

TEST(VectorMathTest, DotProductIsFormedInDouble) {
    // 16785409 - 16785408, of which a float holds only the second.
    const Vector a = {4097.0F, 4096.0F, 0.0F};
    const Vector b = {4097.0F, -4098.0F, 0.0F};
    EXPECT_EQ(DotProduct(a.data(), b.data()), 1.0F);
}

TEST(VectorMathTest, DotProductOfNaNIsNaNAndOverflowsToInfinity) {
    const Vector a = {kNaN, 0.0F, 0.0F};
    const Vector b = {3e38F, 0.0F, 0.0F};
    EXPECT_TRUE(std::isnan(DotProduct(a.data(), b.data())));
    EXPECT_EQ(DotProduct(b.data(), b.data()), kInfinity);
}

TEST(VectorMathTest, DotProductIsTheExactOneRounded) {
    SeededNumbers numbers(107);
    for (int round = 0; round < kRounds; ++round) {
        const Vector a = numbers.VectorWithin(100.0);
        const Vector b = numbers.VectorWithin(100.0);
        SCOPED_TRACE(PrintToString(a) + " " + PrintToString(b));
        const long double exact = dot(widened(a), widened(b));
        // Half a unit of the float and the two sums in double.
        const long double bound = std::fabs(exact) * kUnit + 3e4L * 0x1p-51L;
        EXPECT_LE(std::fabs(DotProduct(a.data(), b.data()) - exact), bound);
    }
}

TEST(VectorMathTest, CrossProductIsRightHandedAndReturnsItsArray) {
    Vector out = {};
    EXPECT_EQ(
        CrossProduct(Vector{1.0F, 0.0F, 0.0F}.data(), Vector{0.0F, 1.0F, 0.0F}.data(), out.data()),
        out.data());
    EXPECT_EQ(out, (Vector{0.0F, 0.0F, 1.0F}));
    CrossProduct(Vector{1.0F, 2.0F, 3.0F}.data(), Vector{-4.0F, 5.0F, 7.0F}.data(), out.data());
    EXPECT_EQ(out, (Vector{-1.0F, -19.0F, 13.0F}));
}

TEST(VectorMathTest, CrossProductIsFormedInDouble) {
    const Vector a = {4096.0F, 4097.0F, 4096.0F};
    const Vector b = {4097.0F, 4098.0F, 4097.0F};
    Vector out = {};
    CrossProduct(a.data(), b.data(), out.data());
    EXPECT_EQ(out, (Vector{1.0F, 0.0F, -1.0F}));
}

TEST(VectorMathTest, CrossProductIsTheExactOneRounded) {
    SeededNumbers numbers(108);
    for (int round = 0; round < kRounds; ++round) {
        const Vector a = numbers.VectorWithin(100.0);
        const Vector b = numbers.VectorWithin(100.0);
        SCOPED_TRACE(PrintToString(a) + " " + PrintToString(b));
        Vector out = {};
        CrossProduct(a.data(), b.data(), out.data());
        const LongVector exact = cross(widened(a), widened(b));
        for (std::size_t i = 0; i < 3; ++i) {
            // The products are exact in double; their difference and the float are rounded.
            EXPECT_LE(std::fabs(out[i] - exact[i]), std::fabs(exact[i]) * (kUnit + 0x1p-50L));
        }
    }
}

// GetAngleRadians, GetAngleDegrees

TEST(VectorMathTest, AngleOfPerpendicularVectorsIsHalfPi) {
    const Vector u = {3.0F, 0.0F, 0.0F};
    const Vector v = {0.0F, 0.0F, -0.5F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data())), 0x3FC90FDBU);
}

TEST(VectorMathTest, AngleOfOppositeVectorsIsTheFloatBelowPi) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {-1.0F, 0.0F, 0.0F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data())), 0x40490FDAU);
}

TEST(VectorMathTest, AngleOfParallelVectorsIsZero) {
    const Vector u = {1.0F, 2.0F, 3.0F};
    const Vector v = {2.0F, 4.0F, 6.0F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data())), bitsOf(0.0F));
    EXPECT_EQ(bitsOf(GetAngleDegrees(u.data(), v.data())), bitsOf(0.0F));
}

TEST(VectorMathTest, AngleInDegreesOfOppositeVectorsIs180) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {-1.0F, 0.0F, 0.0F};
    EXPECT_EQ(GetAngleDegrees(u.data(), v.data()), 180.0F);
}

TEST(VectorMathTest, RightAngleInDegreesIsOneUnitAbove90) {
    // The radians come from the real pi and are divided by the smaller one.
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {0.0F, 1.0F, 0.0F};
    EXPECT_EQ(GetAngleDegrees(u.data(), v.data()), justAbove(90.0F));
}

TEST(VectorMathTest, AngleLeavesItsArgumentsAlone) {
    const Vector u = {3.0F, 4.0F, 5e-8F};
    const Vector v = {0.0F, 2.0F, 0.0F};
    const Vector n = {0.0F, 0.0F, 7.0F};
    const Vector before = u;
    GetAngleRadians(u.data(), v.data(), n.data());
    EXPECT_EQ(u, before);
    EXPECT_EQ(v, (Vector{0.0F, 2.0F, 0.0F}));
    EXPECT_EQ(n, (Vector{0.0F, 0.0F, 7.0F}));
}

TEST(VectorMathTest, AngleIsZeroOnlyForCosinesAboveTheBound) {
    const Vector u = {3.0F, 4.0F, 0.0F};
    const Vector above = {0x1.7ff4cp+1F, 0x1.00396p+2F, 0.0F};     // cosine 0.99999994
    const Vector atBound = {0x1.7f153p+1F, 0x1.ff3f0ap+1F, 0.0F};  // cosine 0.9999999
    EXPECT_EQ(GetAngleRadians(u.data(), above.data()), 0.0F);
    EXPECT_EQ(GetAngleRadians(u.data(), atBound.data()), 0x1p-11F);
}

TEST(VectorMathTest, AngleIsPiOnlyForCosinesBelowTheNegatedBound) {
    const Vector u = {3.0F, 4.0F, 0.0F};
    const Vector below = {-0x1.7ff4cp+1F, -0x1.00396p+2F, 0.0F};
    const Vector atBound = {-0x1.7f153p+1F, -0x1.ff3f0ap+1F, 0.0F};
    EXPECT_EQ(GetAngleRadians(u.data(), below.data()), kBelowPi);
    EXPECT_NEAR(GetAngleRadians(u.data(), atBound.data()), kBelowPi - 0x1p-11F, 3e-7F);
}

TEST(VectorMathTest, AngleIsTheArcCosineOfTheSnappedDotProduct) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {2e-7F, 1.0F, 0.0F};
    // Normalised, v has become the y axis: no trace of 2e-7 is left.
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data())), 0x3FC90FDBU);
}

TEST(VectorMathTest, AngleTakesTheArcCosineInDouble) {
    SeededNumbers numbers(123);
    for (int round = 0; round < kRounds; ++round) {
        const Vector v = numbers.UnitVector();
        SCOPED_TRACE(PrintToString(v));
        // Beside the x axis the product is the normalised first component.
        const long double cosine = normalized(v)[0];
        if (std::fabs(cosine) > 0.999L || std::fabs(cosine) < 1e-6L) {
            continue;
        }
        const auto exact = static_cast<float>(std::acos(cosine));
        EXPECT_EQ(GetAngleRadians(Vector{1.0F, 0.0F, 0.0F}.data(), v.data()), exact);
    }
}

TEST(VectorMathTest, AngleOfAZeroVectorThrows) {
    const Vector zero = {};
    const Vector u = {1.0F, 0.0F, 0.0F};
    EXPECT_THROW(GetAngleRadians(zero.data(), u.data()), std::invalid_argument);
    EXPECT_THROW(GetAngleRadians(u.data(), zero.data()), std::invalid_argument);
    EXPECT_THROW(GetAngleDegrees(u.data(), zero.data()), std::invalid_argument);
    EXPECT_THROW(GetAngleRadians(zero.data(), u.data(), u.data()), std::invalid_argument);
    EXPECT_THROW(GetAngleDegrees(u.data(), zero.data(), u.data()), std::invalid_argument);
}

TEST(VectorMathTest, AngleOfAnInfiniteVectorIsNaN) {
    const Vector u = {kInfinity, 0.0F, 0.0F};
    const Vector v = {1.0F, 0.0F, 0.0F};
    EXPECT_TRUE(std::isnan(GetAngleRadians(u.data(), v.data())));
    EXPECT_TRUE(std::isnan(GetAngleRadians(u.data(), v.data(), v.data())));
}

TEST(VectorMathTest, AngleAgreesWithTheArcTangentOfTheExactProducts) {
    SeededNumbers numbers(109);
    for (int round = 0; round < kRounds; ++round) {
        const Vector u = numbers.UnitVector();
        const Vector v = numbers.UnitVector();
        SCOPED_TRACE(PrintToString(u) + " " + PrintToString(v));
        const LongVector turn = cross(widened(u), widened(v));
        const long double exact = std::atan2(length(turn), dot(widened(u), widened(v)));
        if (length(turn) < 0.1L || std::fabs(u[0]) > 0.999F || std::fabs(u[1]) > 0.999F ||
            std::fabs(u[2]) > 0.999F || std::fabs(v[0]) > 0.999F || std::fabs(v[1]) > 0.999F ||
            std::fabs(v[2]) > 0.999F) {
            continue;  // may be snapped, or the arc cosine loses digits
        }
        // Six components off by 1.5 units at most, enlarged tenfold where the sine is 0.1.
        EXPECT_LE(std::fabs(GetAngleRadians(u.data(), v.data()) - exact), 100.0L * kUnit);
    }
}

TEST(VectorMathTest, DegreesAreRadiansTimes180OverTheFloatBelowPi) {
    SeededNumbers numbers(110);
    for (int round = 0; round < kRounds; ++round) {
        const Vector u = numbers.UnitVector();
        const Vector v = numbers.UnitVector();
        const Vector n = numbers.UnitVector();
        SCOPED_TRACE(PrintToString(u) + " " + PrintToString(v) + " " + PrintToString(n));
        const Rounded radians = GetAngleRadians(u.data(), v.data());
        const Rounded signedRadians = GetAngleRadians(u.data(), v.data(), n.data());
        EXPECT_EQ(GetAngleDegrees(u.data(), v.data()), (radians * 180.0F / kBelowPi).Value());
        EXPECT_EQ(GetAngleDegrees(u.data(), v.data(), n.data()),
                  (signedRadians * 180.0F / kBelowPi).Value());
    }
}

TEST(VectorMathTest, SignedAngleIsPositiveCounterclockwiseSeenFromTheNormal) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {0.0F, 1.0F, 0.0F};
    const Vector up = {0.0F, 0.0F, 1.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data(), up.data())), 0x3FC90FDBU);
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), v.data(), down.data())), 0xBFC90FDBU);
    EXPECT_EQ(GetAngleDegrees(u.data(), v.data(), down.data()), -justAbove(90.0F));
}

TEST(VectorMathTest, SignedAngleIsNegatedWhateverItsSize) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    for (const Vector& v : {Vector{1.0F, 0.001F, 0.0F}, Vector{1.0F, 0.5F, 0.0F},
                            Vector{-1.0F, 0.5F, 0.0F}, Vector{-1.0F, 0.001F, 0.0F}}) {
        EXPECT_LT(GetAngleRadians(u.data(), v.data(), down.data()), 0.0F);
        EXPECT_EQ(GetAngleRadians(u.data(), v.data(), down.data()),
                  -GetAngleRadians(u.data(), v.data()));
    }
}

TEST(VectorMathTest, SignedAngleOfZeroOrPiIsNeverNegative) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector opposite = {-1.0F, 0.0F, 0.0F};
    const Vector down = {0.0F, 0.0F, -1.0F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), u.data(), down.data())), bitsOf(0.0F));
    EXPECT_EQ(GetAngleRadians(u.data(), opposite.data(), down.data()), kBelowPi);
    // The cross product, which is zero, lies on the other side of this plane.
    const Vector askew = {2.0F, 0.0F, 0.0F};
    EXPECT_EQ(bitsOf(GetAngleRadians(u.data(), u.data(), askew.data())), bitsOf(0.0F));
    EXPECT_EQ(GetAngleRadians(u.data(), opposite.data(), askew.data()), kBelowPi);
}

TEST(VectorMathTest, SignedAngleAsksOnWhichSideOfAPlaneThroughTheFirstVector) {
    // u leans toward n, so that the plane through u lies between n and u × v although their
    // product with n is positive: the angle is negated against the turn.
    const Vector u = {1.0F, 0.0F, 0.5F};
    const Vector v = {0.0F, 1.0F, 0.0F};
    const Vector n = {0.0F, 0.0F, 1.0F};
    ASSERT_EQ(GetAngleRadians(u.data(), v.data(), n.data()), GetAngleRadians(u.data(), v.data()));
    const Vector shortV = {0.0F, 0.25F, 0.0F};
    EXPECT_EQ(GetAngleRadians(u.data(), shortV.data(), n.data()),
              -GetAngleRadians(u.data(), shortV.data()));
}

TEST(VectorMathTest, SignedAngleStaysPositiveWhereTheCrossProductLiesOnThePlane) {
    const Vector u = {1.0F, 0.0F, 0.0F};
    const Vector v = {0.0F, 1.0F, 0.0F};
    EXPECT_GT(GetAngleRadians(u.data(), v.data(), Vector{0.0F, 1.0F, 0.0F}.data()), 0.0F);
    // 9e-8 counts as on the plane, 1.1e-7 does not.
    EXPECT_GT(GetAngleRadians(u.data(), v.data(), Vector{0.0F, 1.0F, -9e-8F}.data()), 0.0F);
    EXPECT_LT(GetAngleRadians(u.data(), v.data(), Vector{0.0F, 1.0F, -1.1e-7F}.data()), 0.0F);
}

// RotatePoint, RotatePointRadians, RotatePointAroundOrigin

/// Rodrigues' rotation formula with vectors: it holds for axes of any length as the entries do.
LongVector rotated(const Vector& p, long double angle, const Vector& center, const LongVector& k) {
    const LongVector d = difference(widened(p), widened(center));
    const LongVector turned =
        sum(sum(times(std::cos(angle), d), times(std::sin(angle), cross(k, d))),
            times((1.0L - std::cos(angle)) * dot(k, d), k));
    return sum(turned, widened(center));
}

struct RotationInput {
    Vector p;
    Vector center;
    Vector axis;
    double degrees;
};

RotationInput randomRotation(SeededNumbers& numbers) {
    return {numbers.VectorWithin(10.0), numbers.VectorWithin(10.0), numbers.UnitVector(),
            numbers.Between(-360.0, 360.0)};
}

std::string describe(const RotationInput& input) {
    return PrintToString(input.p) + " about " + PrintToString(input.center) + " along " +
           PrintToString(input.axis) + " by " + PrintToString(input.degrees);
}

void expectWithin(const Vector& actual, const LongVector& exact, long double bound) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_LE(std::fabs(actual[i] - exact[i]), bound) << "component " << i;
    }
}

TEST(VectorMathTest, RotatePointTurnsRightHanded) {
    Vector p = {2.0F, 1.0F, 7.0F};
    Vector center = {1.0F, 1.0F, 0.0F};
    Vector axis = {0.0F, 0.0F, 1.0F};
    Vector out = {};
    RotatePoint(p.data(), 90.0, center.data(), axis.data(), out.data());
    expectWithin(out, {1.0L, 2.0L, 7.0L}, 1e-6L);
    RotatePointRadians(p.data(), 1.5707963267948966, center.data(), axis.data(), out.data());
    expectWithin(out, {1.0L, 2.0L, 7.0L}, 1e-6L);
    RotatePointAroundOrigin(p.data(), 90.0, axis.data(), out.data());
    expectWithin(out, {-1.0L, 2.0L, 7.0L}, 1e-6L);
}

TEST(VectorMathTest, RotatePointTakesTheAngleAsAFloatAndTheOthersAsADouble) {
    Vector p = {1.0F, 0.0F, 0.0F};
    Vector origin = {};
    Vector axis = {0.0F, 0.0F, 1.0F};
    Vector out = {};
    RotatePoint(p.data(), 90.0, origin.data(), axis.data(), out.data());
    EXPECT_FLOAT_EQ(out[0], -4.37113883e-8F);  // the cosine of the float nearest to pi / 2
    RotatePointRadians(p.data(), 1.5707963267948966, origin.data(), axis.data(), out.data());
    EXPECT_FLOAT_EQ(out[0], 6.123234e-17F);  // the cosine of the double nearest to pi / 2
    RotatePointAroundOrigin(p.data(), 90.0, axis.data(), out.data());
    EXPECT_FLOAT_EQ(out[0], 6.123234e-17F);
}

TEST(VectorMathTest, RotatePointRoundsEveryStepToAFloat) {
    SeededNumbers numbers(111);
    for (int round = 0; round < kRounds; ++round) {
        RotationInput input = randomRotation(numbers);
        SCOPED_TRACE(describe(input));
        const auto radians = static_cast<float>(input.degrees * 0.017453292519943295);
        const Rounded s = std::sin(radians);
        const Rounded c = std::cos(radians);
        const Rounded t = Rounded(1.0F) - c;
        const Rounded x = input.axis[0];
        const Rounded y = input.axis[1];
        const Rounded z = input.axis[2];
        const Rounded dx = Rounded(input.p[0]) - input.center[0];
        const Rounded dy = Rounded(input.p[1]) - input.center[1];
        const Rounded dz = Rounded(input.p[2]) - input.center[2];
        const Rounded outX = dx * (x * x * t + c) + dy * (x * y * t - z * s) +
                             dz * (x * z * t + y * s) + input.center[0];
        const Rounded outY = dx * (x * y * t + z * s) + dy * (y * y * t + c) +
                             dz * (y * z * t - x * s) + input.center[1];
        const Rounded outZ = dx * (x * z * t - y * s) + dy * (y * z * t + x * s) +
                             dz * (z * z * t + c) + input.center[2];
        Vector out = {};
        RotatePoint(input.p.data(), input.degrees, input.center.data(), input.axis.data(),
                    out.data());
        EXPECT_EQ(bitsOf(out), bitsOf(Vector{outX.Value(), outY.Value(), outZ.Value()}));
    }
}

TEST(VectorMathTest, RotatePointAgreesWithTheRotationFormula) {
    SeededNumbers numbers(112);
    for (int round = 0; round < kRounds; ++round) {
        RotationInput input = randomRotation(numbers);
        SCOPED_TRACE(describe(input));
        const long double radians = input.degrees / 180.0L * kPiExactly;
        const LongVector exact = rotated(input.p, radians, input.center, widened(input.axis));
        const long double size =
            magnitude(widened(input.p)) + 2.0L * magnitude(widened(input.center));
        Vector out = {};
        RotatePoint(input.p.data(), input.degrees, input.center.data(), input.axis.data(),
                    out.data());
        // A dozen roundings on the way of each summand, and the angle's own.
        expectWithin(out, exact, (12.0L + std::fabs(radians)) * size * kUnit);
    }
}

TEST(VectorMathTest, RotatePointRadiansRoundsOnceAtTheEnd) {
    SeededNumbers numbers(113);
    for (int round = 0; round < kRounds; ++round) {
        RotationInput input = randomRotation(numbers);
        SCOPED_TRACE(describe(input));
        const double radians = input.degrees / 57.0;
        const LongVector exact = rotated(input.p, radians, input.center, widened(input.axis));
        Vector out = {};
        RotatePointRadians(input.p.data(), radians, input.center.data(), input.axis.data(),
                           out.data());
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_LE(std::fabs(out[i] - exact[i]), std::fabs(exact[i]) * kUnit + 1e-13L);
        }
    }
}

TEST(VectorMathTest, RotatePointAroundOriginRoundsOnceAtTheEnd) {
    SeededNumbers numbers(114);
    for (int round = 0; round < kRounds; ++round) {
        RotationInput input = randomRotation(numbers);
        SCOPED_TRACE(describe(input));
        const long double radians = input.degrees / 180.0L * kPiExactly;
        const LongVector exact = rotated(input.p, radians, Vector{}, widened(input.axis));
        Vector out = {};
        RotatePointAroundOrigin(input.p.data(), input.degrees, input.axis.data(), out.data());
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_LE(std::fabs(out[i] - exact[i]), std::fabs(exact[i]) * kUnit + 1e-13L);
        }
    }
}

TEST(VectorMathTest, RotationsDoNotNormaliseTheAxis) {
    Vector p = {1.0F, 0.0F, 1.0F};
    Vector origin = {};
    Vector axis = {0.0F, 0.0F, 2.0F};
    Vector out = {};
    RotatePoint(p.data(), 90.0, origin.data(), axis.data(), out.data());
    expectWithin(out, {0.0L, 2.0L, 4.0L}, 1e-5L);
    RotatePointRadians(p.data(), 1.5707963267948966, origin.data(), axis.data(), out.data());
    expectWithin(out, {0.0L, 2.0L, 4.0L}, 1e-5L);
    RotatePointAroundOrigin(p.data(), 90.0, axis.data(), out.data());
    expectWithin(out, {0.0L, 2.0L, 4.0L}, 1e-5L);
    EXPECT_EQ(axis, (Vector{0.0F, 0.0F, 2.0F}));
}

TEST(VectorMathTest, RotationsMayWriteIntoThePoint) {
    Vector center = {0.5F, -1.0F, 2.0F};
    Vector axis = {0.6F, 0.0F, 0.8F};
    const Vector p = {1.0F, 2.0F, 3.0F};
    Vector apart = {};

    Vector source = p;
    Vector inPlace = p;
    RotatePoint(source.data(), 33.0, center.data(), axis.data(), apart.data());
    RotatePoint(inPlace.data(), 33.0, center.data(), axis.data(), inPlace.data());
    EXPECT_EQ(bitsOf(inPlace), bitsOf(apart));
    EXPECT_EQ(source, p);

    inPlace = p;
    RotatePointRadians(source.data(), 0.7, center.data(), axis.data(), apart.data());
    RotatePointRadians(inPlace.data(), 0.7, center.data(), axis.data(), inPlace.data());
    EXPECT_EQ(bitsOf(inPlace), bitsOf(apart));

    inPlace = p;
    RotatePointAroundOrigin(source.data(), 33.0, axis.data(), apart.data());
    RotatePointAroundOrigin(inPlace.data(), 33.0, axis.data(), inPlace.data());
    EXPECT_EQ(bitsOf(inPlace), bitsOf(apart));
}

// CreateRotationMatrixRadians, CreateRotationMatrixDegrees

/// Column c of the rotation is the image of axis c.
template <typename Real>
void expectRotation(const std::array<Real, 16>& m, const LongVector& unitAxis, long double angle,
                    long double bound) {
    for (std::size_t column = 0; column < 3; ++column) {
        Vector axis = {};
        axis[column] = 1.0F;
        const LongVector image = rotated(axis, angle, Vector{}, unitAxis);
        for (std::size_t row = 0; row < 3; ++row) {
            EXPECT_LE(std::fabs(m[4 * column + row] - image[row]), bound)
                << "row " << row << " column " << column;
        }
    }
    for (const std::size_t zero : {3U, 7U, 11U, 12U, 13U, 14U}) {
        EXPECT_EQ(m[zero], Real{0}) << "at " << zero;
    }
    EXPECT_EQ(m[15], Real{1});
}

TEST(VectorMathTest, RotationMatrixByDegreesNormalisesItsAxisAndTurnsXToY) {
    Vector axis = {0.0F, 0.0F, 2.0F};
    std::array<float, 16> m = {};
    CreateRotationMatrixDegrees(axis.data(), 90.0F, m.data());
    EXPECT_EQ(bitsOf(axis), bitsOf(Vector{0.0F, 0.0F, 1.0F}));
    Vector p = {1.0F, 0.0F, 0.0F};
    MatrixMultiplyPoint(p.data(), m.data(), p.data());
    expectWithin(p, {0.0L, 1.0L, 0.0L}, 1e-7L);
}

TEST(VectorMathTest, RotationMatrixOfDoublesByDegreesNormalisesItsAxisAndTurnsXToY) {
    DoubleVector axis = {0.0, 0.0, 2.0};
    std::array<double, 16> m = {};
    CreateRotationMatrixDegrees(axis.data(), 90.0, m.data());
    EXPECT_EQ(axis, (DoubleVector{0.0, 0.0, 1.0}));
    DoubleVector p = {1.0, 0.0, 0.0};
    MatrixMultiplyPoint(p.data(), m.data(), p.data());
    EXPECT_NEAR(p[0], 0.0, 1e-15);
    EXPECT_NEAR(p[1], 1.0, 1e-15);
    EXPECT_EQ(p[2], 0.0);
}

TEST(VectorMathTest, RotationMatrixIsTheRotationFormulaRoundedOnce) {
    SeededNumbers numbers(115);
    for (int round = 0; round < kRounds; ++round) {
        Vector axis = numbers.VectorWithin(5.0);
        const float angle = numbers.FloatBetween(-7.0, 7.0);
        SCOPED_TRACE(PrintToString(axis) + " " + PrintToString(angle));
        const Vector unitAxis = normalized(axis);
        std::array<float, 16> m = {};
        m.fill(kNaN);
        CreateRotationMatrixRadians(axis.data(), angle, m.data());
        EXPECT_EQ(bitsOf(axis), bitsOf(unitAxis));
        // Entries up to 1 are off by half a unit, the rest is the double's.
        expectRotation(m, widened(unitAxis), angle, kUnit * 1.001L);
    }
}

TEST(VectorMathTest, RotationMatrixOfDoublesIsTheRotationFormula) {
    SeededNumbers numbers(116);
    for (int round = 0; round < kRounds; ++round) {
        DoubleVector axis = {numbers.Between(-5.0, 5.0), numbers.Between(-5.0, 5.0),
                             numbers.Between(-5.0, 5.0)};
        const double angle = numbers.Between(-7.0, 7.0);
        SCOPED_TRACE(PrintToString(axis) + " " + PrintToString(angle));
        const DoubleVector unitAxis = normalized(axis);
        std::array<double, 16> m = {};
        m.fill(double{kNaN});
        CreateRotationMatrixRadians(axis.data(), angle, m.data());
        EXPECT_EQ(axis, unitAxis);
        // Half a unit each for sine, cosine, and at most six operations on numbers up to 2.
        expectRotation(m, {axis[0], axis[1], axis[2]}, angle, 16.0L * 0x1p-53L);
    }
}

TEST(VectorMathTest, RotationMatrixByDegreesRoundsTheFloatAngleOnce) {
    SeededNumbers numbers(117);
    for (int round = 0; round < kRounds; ++round) {
        const float degrees = numbers.FloatBetween(-720.0, 720.0);
        SCOPED_TRACE(PrintToString(degrees));
        Vector axis = {1.0F, 2.0F, 3.0F};
        std::array<float, 16> byDegrees = {};
        std::array<float, 16> byRadians = {};
        CreateRotationMatrixDegrees(axis.data(), degrees, byDegrees.data());
        axis = {1.0F, 2.0F, 3.0F};
        CreateRotationMatrixRadians(axis.data(), (Rounded(degrees) * 0.017453292F).Value(),
                                    byRadians.data());
        EXPECT_EQ(byDegrees, byRadians);
    }
}

TEST(VectorMathTest, RotationMatrixOfDoublesByDegreesMultipliesInDouble) {
    SeededNumbers numbers(118);
    for (int round = 0; round < kRounds; ++round) {
        const double degrees = numbers.Between(-720.0, 720.0);
        SCOPED_TRACE(PrintToString(degrees));
        DoubleVector axis = {1.0, 2.0, 3.0};
        std::array<double, 16> byDegrees = {};
        std::array<double, 16> byRadians = {};
        CreateRotationMatrixDegrees(axis.data(), degrees, byDegrees.data());
        axis = {1.0, 2.0, 3.0};
        CreateRotationMatrixRadians(axis.data(), degrees * 0.017453292519943295, byRadians.data());
        EXPECT_EQ(byDegrees, byRadians);
    }
}

TEST(VectorMathTest, RotationMatrixOfAFloatAngleIsFormedInDouble) {
    Vector axis = {0.0F, 0.0F, 1.0F};
    std::array<float, 16> m = {};
    CreateRotationMatrixRadians(axis.data(), 3.1415927F, m.data());
    EXPECT_FLOAT_EQ(m[1], -8.74227766e-8F);  // the sine of that float; 0 for the real pi
    EXPECT_EQ(m[0], -1.0F);
}

TEST(VectorMathTest, RotationMatrixOfAZeroAxisThrowsAndLeavesTheIdentity) {
    const std::array<float, 16> identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::array<float, 16> m = {};
    m.fill(7.0F);
    Vector axis = {};
    EXPECT_THROW(CreateRotationMatrixRadians(axis.data(), 1.0F, m.data()), std::invalid_argument);
    EXPECT_EQ(m, identity);
    EXPECT_THROW(CreateRotationMatrixDegrees(axis.data(), 1.0F, m.data()), std::invalid_argument);

    const std::array<double, 16> identityOfDoubles = {1, 0, 0, 0, 0, 1, 0, 0,
                                                      0, 0, 1, 0, 0, 0, 0, 1};
    std::array<double, 16> n = {};
    DoubleVector doubleAxis = {};
    EXPECT_THROW(CreateRotationMatrixRadians(doubleAxis.data(), 1.0, n.data()),
                 std::invalid_argument);
    EXPECT_EQ(n, identityOfDoubles);
    EXPECT_THROW(CreateRotationMatrixDegrees(doubleAxis.data(), 1.0, n.data()),
                 std::invalid_argument);
}

// MatrixMultiplyPoint

TEST(VectorMathTest, MatrixMultiplyPointReadsTheMatrixByColumns) {
    std::array<float, 16> m = {1, 2, 3, 99, 10, 20, 30, 99, 100, 200, 300, 99, 5, 6, 7, 99};
    Vector p = {1.0F, 2.0F, 3.0F};
    Vector out = {};
    MatrixMultiplyPoint(p.data(), m.data(), out.data());
    EXPECT_EQ(out, (Vector{326.0F, 648.0F, 970.0F}));
    EXPECT_EQ(p, (Vector{1.0F, 2.0F, 3.0F}));
}

TEST(VectorMathTest, MatrixMultiplyPointOfDoublesReadsTheMatrixByColumns) {
    std::array<double, 16> m = {1, 2, 3, 99, 10, 20, 30, 99, 100, 200, 300, 99, 5, 6, 7, 99};
    DoubleVector p = {1.0, 2.0, 3.0};
    DoubleVector out = {};
    MatrixMultiplyPoint(p.data(), m.data(), out.data());
    EXPECT_EQ(out, (DoubleVector{326.0, 648.0, 970.0}));
}

TEST(VectorMathTest, MatrixMultiplyPointMayWriteIntoThePoint) {
    std::array<float, 16> m = {1, 2, 3, 0, 10, 20, 30, 0, 100, 200, 300, 0, 5, 6, 7, 1};
    Vector p = {1.0F, 2.0F, 3.0F};
    MatrixMultiplyPoint(p.data(), m.data(), p.data());
    EXPECT_EQ(p, (Vector{326.0F, 648.0F, 970.0F}));
    std::array<double, 16> n = {1, 2, 3, 0, 10, 20, 30, 0, 100, 200, 300, 0, 5, 6, 7, 1};
    DoubleVector q = {1.0, 2.0, 3.0};
    MatrixMultiplyPoint(q.data(), n.data(), q.data());
    EXPECT_EQ(q, (DoubleVector{326.0, 648.0, 970.0}));
}

TEST(VectorMathTest, MatrixMultiplyPointRoundsEveryStepToAFloat) {
    SeededNumbers numbers(119);
    for (int round = 0; round < kRounds; ++round) {
        std::array<float, 16> m = {};
        for (float& entry : m) {
            entry = numbers.FloatBetween(-10.0, 10.0);
        }
        Vector p = numbers.VectorWithin(10.0);
        SCOPED_TRACE(PrintToString(m) + " " + PrintToString(p));
        Vector out = {};
        MatrixMultiplyPoint(p.data(), m.data(), out.data());
        for (std::size_t i = 0; i < 3; ++i) {
            const Rounded expected = Rounded(m[i]) * p[0] + Rounded(m[i + 4]) * p[1] +
                                     Rounded(m[i + 8]) * p[2] + m[i + 12];
            EXPECT_EQ(out[i], expected.Value()) << "component " << i;
        }
    }
}

TEST(VectorMathTest, MatrixMultiplyPointOfDoublesKeepsDoublePrecision) {
    SeededNumbers numbers(120);
    for (int round = 0; round < kRounds; ++round) {
        std::array<double, 16> m = {};
        for (double& entry : m) {
            entry = numbers.Between(-10.0, 10.0);
        }
        DoubleVector p = {numbers.Between(-9.0, 9.0), numbers.Between(-9.0, 9.0), 0.3};
        SCOPED_TRACE(PrintToString(m) + " " + PrintToString(p));
        DoubleVector out = {};
        MatrixMultiplyPoint(p.data(), m.data(), out.data());
        const LongVector source = {p[0], p[1], p[2]};
        for (std::size_t i = 0; i < 3; ++i) {
            const long double exact = dot({m[i], m[i + 4], m[i + 8]}, source) + m[i + 12];
            // Summands below 100, six roundings.
            EXPECT_LE(std::fabs(out[i] - exact), 300.0L * 6.0L * 0x1p-53L) << "component " << i;
        }
    }
}

// GetCenter

TEST(VectorMathTest, CenterIsTheMeanOfThePoints) {
    const std::vector<float> coords = {0, 0, 0, 2, 4, 8, 4, 5, 1};
    Vector out = {9.0F, 9.0F, 9.0F};
    GetCenter(out.data(), coords);
    EXPECT_EQ(out, (Vector{2.0F, 3.0F, 3.0F}));
    out = {9.0F, 9.0F, 9.0F};
    GetCenter(out.data(), 3, coords.data());
    EXPECT_EQ(out, (Vector{2.0F, 3.0F, 3.0F}));
}

TEST(VectorMathTest, CenterOfSevenFloatsIsThatOfTwoPoints) {
    Vector out = {};
    GetCenter(out.data(), std::vector<float>{1, 2, 3, 3, 4, 5, 1000});
    EXPECT_EQ(out, (Vector{2.0F, 3.0F, 4.0F}));
    GetCenter(out.data(), std::vector<float>{1, 2, 3, 3, 4, 5, 1000, 1000});
    EXPECT_EQ(out, (Vector{2.0F, 3.0F, 4.0F}));
}

TEST(VectorMathTest, CenterReadsOnlyTheCountedPoints) {
    const std::vector<float> coords = {1, 2, 3, 1000, 1000, 1000};
    Vector out = {};
    GetCenter(out.data(), 1, coords.data());
    EXPECT_EQ(out, (Vector{1.0F, 2.0F, 3.0F}));
}

TEST(VectorMathTest, CenterOfNoPointIsNaN) {
    Vector out = {};
    GetCenter(out.data(), std::vector<float>{1, 2});
    EXPECT_TRUE(std::isnan(out[0]) && std::isnan(out[1]) && std::isnan(out[2]));
    out = {};
    GetCenter(out.data(), 0, nullptr);
    EXPECT_TRUE(std::isnan(out[0]) && std::isnan(out[1]) && std::isnan(out[2]));
}

TEST(VectorMathTest, CenterSumsInFloatFromTheFirstPointOn) {
    // From the first on, each 1 is lost beside 2^24; from the last on, they would add up first.
    const std::vector<float> coords = {16777216, 0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0};
    Vector out = {};
    GetCenter(out.data(), coords);
    EXPECT_EQ(out[0], 4194304.0F);
    GetCenter(out.data(), 4, coords.data());
    EXPECT_EQ(out[0], 4194304.0F);
}

TEST(VectorMathTest, CenterDividesEachSumByTheCount) {
    // A third is no float: multiplying by it would give other digits for some of these.
    SeededNumbers numbers(121);
    for (int round = 0; round < kRounds; ++round) {
        const Vector a = numbers.VectorWithin(10.0);
        const Vector b = numbers.VectorWithin(10.0);
        const Vector c = numbers.VectorWithin(10.0);
        SCOPED_TRACE(PrintToString(a) + " " + PrintToString(b) + " " + PrintToString(c));
        Vector out = {};
        GetCenter(out.data(),
                  std::vector<float>{a[0], a[1], a[2], b[0], b[1], b[2], c[0], c[1], c[2]});
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(out[i], ((Rounded(a[i]) + b[i] + c[i]) / 3.0F).Value());
        }
    }
}

// All of them

TEST(VectorMathTest, NothingIsWrittenBehindAVector) {
    std::array<float, 16> m = {1, 2, 3, 99, 10, 20, 30, 99, 100, 200, 300, 99, 5, 6, 7, 99};
    std::array<float, 4> a = {1.0F, 2.0F, 3.0F, 16.0F};
    std::array<float, 4> b = {4.0F, -5.0F, 6.0F, 32.0F};
    std::array<float, 4> out = {0.0F, 0.0F, 0.0F, 8.0F};
    Add(a.data(), b.data(), out.data());
    EXPECT_EQ(out[3], 8.0F);
    Subtract(a.data(), b.data(), out.data());
    EXPECT_EQ(out[3], 8.0F);
    Multiply(out.data(), 2.0F);
    EXPECT_EQ(out[3], 8.0F);
    Negate(out.data());
    EXPECT_EQ(out[3], 8.0F);
    Normalize(out.data());
    EXPECT_EQ(out[3], 8.0F);
    RotatePoint(a.data(), 30.0, b.data(), b.data(), out.data());
    EXPECT_EQ(out[3], 8.0F);
    RotatePointAroundOrigin(a.data(), 30.0, b.data(), out.data());
    EXPECT_EQ(out[3], 8.0F);
    MatrixMultiplyPoint(a.data(), m.data(), out.data());
    EXPECT_EQ(out[3], 8.0F);
    GetCenter(out.data(), std::vector<float>{0, 0, 0, 2, 4, 8});
    EXPECT_EQ(out[3], 8.0F);
}

}  // namespace
}  // namespace KesVizCore
