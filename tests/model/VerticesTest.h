#pragma once

/// @file
/// What VizEdge and VizPoints have in common: vertices with extrema, transforms and transparency.
/// Each has its own instance of these tests, with the loader of its kind.

#include "model/ModelTestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>

namespace KesVizCore::support {

template <typename Loader>
class VerticesTest : public ::testing::Test {
protected:
    using Element = typename Loader::Made;

    VerticesTest() : _element(load<Loader>()) {}

    Element& element() { return *_element; }

    /// An element of the same kind with these vertices.
    static std::unique_ptr<Element> withVertices(const Floats& vertices) {
        return load<Loader>([&](Element& made) { made.SetVertices(vertices); });
    }

private:
    std::unique_ptr<Element> _element;
};

TYPED_TEST_SUITE_P(VerticesTest);

TYPED_TEST_P(VerticesTest, HasNoVerticesAtFirst) {
    EXPECT_TRUE(this->element().GetVertices().empty());
    EXPECT_TRUE(this->element().GetIndices().empty());
    EXPECT_EQ(extremaOf(this->element()), (Extrema{0, 0, 0, 0, 0, 0}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformIsColumnMajorWithTheTranslationLast) {
    this->element().SetVertices({1, 10, 100, -1, 0, 2});
    Matrix matrix = unevenMatrix();
    this->element().ApplyTransform(matrix.Columns);
    // The matrix's last row is NaN: it is not read, and nothing is divided by a fourth coordinate.
    EXPECT_EQ(this->element().GetVertices(),
              (Floats{2 + 70 + 1700 + 29, 3 + 110 + 1900 + 31, 5 + 130 + 2300 + 37, -2 + 34 + 29,
                      -3 + 38 + 31, -5 + 46 + 37}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformByATranslationMovesEveryVertex) {
    this->element().SetVertices({1, 2, 3, 4, 5, 6});
    Matrix matrix = translationBy(1, 0, 0);
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_EQ(this->element().GetVertices(), (Floats{2, 2, 3, 5, 5, 6}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformByTheIdentityKeepsEveryBit) {
    const Floats vertices = {0.1F, -1e-40F, 3e38F, 1e-7F, 16777217.0F, -0.1F};
    this->element().SetVertices(vertices);
    Matrix matrix = translationBy(0, 0, 0);
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_EQ(bitsOf(this->element().GetVertices()), bitsOf(vertices));
}

TYPED_TEST_P(VerticesTest, ApplyTransformLeavesTheExtremaWhereTheyWere) {
    this->element().SetVertices({1, 2, 3, 4, 5, 6});
    Matrix matrix = translationBy(100, 100, 100);
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 4, 5, 6}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformLeavesATrailingPartOfATripleAlone) {
    this->element().SetVertices({1, 2, 3, 4, 5});
    Matrix matrix = translationBy(100, 100, 100);
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_EQ(this->element().GetVertices(), (Floats{101, 102, 103, 4, 5}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformOfNothingIsNothing) {
    Matrix matrix = unevenMatrix();
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_TRUE(this->element().GetVertices().empty());
}

TYPED_TEST_P(VerticesTest, ApplyTransformTwiceIsOneAfterTheOther) {
    this->element().SetVertices({1, 2, 3});
    Matrix scale = scaleBy(2, 4, 8);
    Matrix translation = translationBy(1, 1, 1);
    this->element().ApplyTransform(scale.Columns);
    this->element().ApplyTransform(translation.Columns);
    EXPECT_EQ(this->element().GetVertices(), (Floats{3, 9, 25}));
}

TYPED_TEST_P(VerticesTest, ApplyTransformLeavesTheMatrixAlone) {
    this->element().SetVertices({1, 2, 3});
    Matrix matrix = scaleBy(2, 4, 8);
    this->element().ApplyTransform(matrix.Columns);
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            EXPECT_EQ(matrix.Columns[column][row], scaleBy(2, 4, 8).Columns[column][row]);
        }
    }
}

TYPED_TEST_P(VerticesTest, ApplyTransformIsAsExactAsFloatsAre) {
    SeededNumbers numbers(53);
    for (int round = 0; round < 50; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Matrix matrix = randomMatrix(numbers);
        Floats vertices;
        for (int value = 0; value < 30; ++value) {
            vertices.push_back(numbers.FloatBetween(-1000.0, 1000.0));
        }
        const auto moved = this->withVertices(vertices);
        moved->ApplyTransform(matrix.Columns);
        for (std::size_t place = 0; place < vertices.size(); place += 3) {
            const Vector point = tripleAt(vertices.data() + place);
            const LongVector expected = transformed(matrix, point, true);
            const LongVector bound = roundingOf(matrix, point);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                EXPECT_LE(std::fabs(moved->GetVertices()[place + axis] - expected[axis]),
                          bound[axis])
                    << "at float " << place + axis;
            }
        }
    }
}

TYPED_TEST_P(VerticesTest, ApplyTransformRoundsEveryStepToAFloat) {
    SeededNumbers numbers(57);
    for (int round = 0; round < 50; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Matrix matrix = randomMatrix(numbers);
        Floats vertices(3 * static_cast<std::size_t>(numbers.Between(1.0, 40.0)));
        std::generate(vertices.begin(), vertices.end(),
                      [&] { return numbers.FloatBetween(-1000.0, 1000.0); });
        Floats expected;
        for (std::size_t place = 0; place < vertices.size(); ++place) {
            const float* const point = vertices.data() + place / 3 * 3;
            const auto entry = [&](std::size_t column) {
                return Rounded(matrix.Columns[column][place % 3]);
            };
            expected.push_back(
                (entry(0) * point[0] + entry(1) * point[1] + entry(2) * point[2] + entry(3))
                    .Value());
        }
        const auto moved = this->withVertices(vertices);
        moved->ApplyTransform(matrix.Columns);
        EXPECT_EQ(bitsOf(moved->GetVertices()), bitsOf(expected));
    }
}

TYPED_TEST_P(VerticesTest, SetVerticesStoresThemWithTheirExtrema) {
    this->element().SetVertices({1, 2, 3, -1, 5, 0});
    EXPECT_EQ(this->element().GetVertices(), (Floats{1, 2, 3, -1, 5, 0}));
    EXPECT_EQ(extremaOf(this->element()), (Extrema{-1, 2, 0, 1, 5, 3}));
}

TYPED_TEST_P(VerticesTest, SetVerticesOfOnePointHasItAsBothExtrema) {
    this->element().SetVertices({1, -2, 3});
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, -2, 3, 1, -2, 3}));
}

TYPED_TEST_P(VerticesTest, SetVerticesOfLessThanATripleChangesNothing) {
    this->element().SetVertices({1, 2, 3});
    for (const Floats& few : {Floats{}, Floats{7}, Floats{7, 8}}) {
        this->element().SetVertices(few);
        EXPECT_EQ(this->element().GetVertices(), (Floats{1, 2, 3}));
        EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 1, 2, 3}));
    }
}

TYPED_TEST_P(VerticesTest, SetVerticesStoresATrailingPartOfATripleButDoesNotLookAtIt) {
    this->element().SetVertices({1, 2, 3, 4, 5, 6, -7});
    EXPECT_EQ(this->element().GetVertices(), (Floats{1, 2, 3, 4, 5, 6, -7}));
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 4, 5, 6}));
}

TYPED_TEST_P(VerticesTest, ASecondSetVerticesAppends) {
    this->element().SetVertices({1, 2, 3});
    this->element().SetVertices({4, 5, 6, 7, 8, 9});
    EXPECT_EQ(this->element().GetVertices(), (Floats{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TYPED_TEST_P(VerticesTest, ASecondSetVerticesLooksAtTheFirstStoredPoints) {
    // Kept so: the first new point, and then the second of all that are stored.
    this->element().SetVertices({100, 100, 100, 50, 60, 70, 200, 200, 200});
    this->element().SetVertices({1, 2, 3, -1000, 1000, -1000});
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 50, 60, 70}));
}

TYPED_TEST_P(VerticesTest, ASecondSetVerticesOfOnePointForgetsTheEarlierExtrema) {
    this->element().SetVertices({100, 100, 100, -50, 60, 70});
    this->element().SetVertices({1, 2, 3});
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 1, 2, 3}));
}

TYPED_TEST_P(VerticesTest, ASecondSetVerticesOfMorePointsReachesTheNewOnes) {
    this->element().SetVertices({10, 10, 10});
    this->element().SetVertices({1, 1, 1, 2, 2, 2, 3, 30, -3});
    // Looked at: the first new point, then the second and third that are stored: (1 1 1), (2 2 2).
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 1, 1, 2, 2, 2}));
}

TYPED_TEST_P(VerticesTest, ATrailingPartShiftsTheTriplesOfASecondSetVertices) {
    this->element().SetVertices({1, 2, 3, 40});
    this->element().SetVertices({5, 6, 7, 8, 9, 10});
    // The second stored triple is now 40, 5, 6.
    EXPECT_EQ(extremaOf(this->element()), (Extrema{5, 5, 6, 40, 6, 7}));
}

TYPED_TEST_P(VerticesTest, SetVerticesOfItsOwnVerticesDoublesThem) {
    this->element().SetVertices({1, 2, 3, 4, 5, 6});
    this->element().SetVertices(this->element().GetVertices());
    EXPECT_EQ(this->element().GetVertices(), (Floats{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, 2, 3, 4, 5, 6}));
}

TYPED_TEST_P(VerticesTest, AFirstPointOfNaNKeepsTheExtremaNaN) {
    this->element().SetVertices({kNaN, 0, 0, 1, 1, 1});
    const Extrema extrema = extremaOf(this->element());
    EXPECT_TRUE(std::isnan(extrema[0]));
    EXPECT_TRUE(std::isnan(extrema[3]));
    EXPECT_EQ(extrema[4], 1.0F);
}

TYPED_TEST_P(VerticesTest, ALaterPointOfNaNIsPassedOver) {
    this->element().SetVertices({1, 1, 1, kNaN, kNaN, kNaN, 3, -3, 2});
    EXPECT_EQ(extremaOf(this->element()), (Extrema{1, -3, 1, 3, 1, 2}));
}

TYPED_TEST_P(VerticesTest, ExtremaOfRandomVerticesAreTheirRange) {
    SeededNumbers numbers(54);
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Floats vertices;
        Extrema expected{};
        for (std::size_t place = 0; place < 3U * (1U + static_cast<std::size_t>(round) % 9U);
             ++place) {
            const float value = numbers.FloatBetween(-10.0, 10.0);
            const std::size_t axis = place % 3;
            vertices.push_back(value);
            expected[axis] = place < 3 ? value : std::min(expected[axis], value);
            expected[axis + 3] = place < 3 ? value : std::max(expected[axis + 3], value);
        }
        EXPECT_EQ(extremaOf(*this->withVertices(vertices)), expected);
    }
}

/// The extrema of the first stored points as they are told: from the first added point on, a
/// coordinate counts when it is strictly beyond.
inline Extrema extremaOneByOne(const Floats& stored, const Floats& added) {
    Extrema extrema = {added[0], added[1], added[2], added[0], added[1], added[2]};
    for (std::size_t point = 1; point < added.size() / 3; ++point) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const float coordinate = stored[3 * point + axis];
            if (extrema[axis] > coordinate) {
                extrema[axis] = coordinate;
            }
            if (coordinate > extrema[axis + 3]) {
                extrema[axis + 3] = coordinate;
            }
        }
    }
    return extrema;
}

TYPED_TEST_P(VerticesTest, ExtremaAreToTheBitThoseOfOnePointAfterAnother) {
    const Floats zeros = {0.0F, -0.0F};
    const Floats strange = {0.0F,    -0.0F, kNaN,      -kNaN,      std::nanf("7"), 1e-45F,
                            -1e-45F, 1.0F,  kInfinity, -kInfinity, -1.0F,          3e38F};
    SeededNumbers numbers(55);
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const double often = round % 3 == 0 ? 1.0 : round % 3 == 1 ? 0.5 : 0.02;
        const double least = round % 5 == 0 ? 0.0 : -10.0;  // with no number below the zeros
        const double most = round % 5 == 1 ? 0.0 : 10.0;
        const auto next = [&]() -> float {
            const Floats& special = round % 2 == 0 ? zeros : strange;
            return numbers.Between(0.0, 1.0) < often
                       ? special[static_cast<std::size_t>(
                             numbers.Between(0.0, static_cast<double>(special.size())))]
                       : numbers.FloatBetween(least, most);
        };
        const auto element = this->withVertices({});
        for (int call = 0; call < 2; ++call) {
            Floats added(
                static_cast<std::size_t>(numbers.Between(3.0, round % 20 == 0 ? 20'000.0 : 200.0)));
            std::generate(added.begin(), added.end(), next);
            if (round % 4 == 0) {
                std::fill_n(added.begin(), 3, round % 8 == 0 ? 5.0F : -5.0F);
            }
            element->SetVertices(added);
            const Extrema expected = extremaOneByOne(element->GetVertices(), added);
            const Extrema extrema = extremaOf(*element);
            ASSERT_EQ(bitsOf({extrema.begin(), extrema.end()}),
                      bitsOf({expected.begin(), expected.end()}));
        }
    }
}

TYPED_TEST_P(VerticesTest, SetVerticesStoresManyFloatsOneByOne) {
    SeededNumbers numbers(56);
    for (const std::size_t size : {3071U, 3072U, 3073U, 3074U, 6144U, 10'000U}) {
        Floats vertices(size);
        std::generate(vertices.begin(), vertices.end(),
                      [&] { return numbers.FloatBetween(-1.0, 1.0); });
        EXPECT_EQ(this->withVertices(vertices)->GetVertices(), vertices);
    }
}

TYPED_TEST_P(VerticesTest, GetVerticesIsTheStoredArray) {
    const Floats& vertices = this->element().GetVertices();
    this->element().SetVertices({1, 2, 3});
    EXPECT_EQ(&vertices, &this->element().GetVertices());
    EXPECT_EQ(vertices.size(), 3U);
}

TYPED_TEST_P(VerticesTest, RemoveTransparencyMakesTheColorOpaque) {
    this->element().SetColor(RGBAColor(1, 2, 3, 128));
    this->element().RemoveTransparency();
    EXPECT_TRUE(this->element().GetColor() == RGBAColor(1, 2, 3, 255));
    EXPECT_TRUE(this->element().HasColor());
}

TYPED_TEST_P(VerticesTest, RemoveTransparencyGivesNoColor) {
    this->element().RemoveTransparency();
    EXPECT_FALSE(this->element().HasColor());
    EXPECT_TRUE(this->element().GetColor() == RGBAColor());
}

TYPED_TEST_P(VerticesTest, CopiesHaveVerticesAndExtremaOfTheirOwn) {
    this->element().SetVertices({1, 2, 3, 4, 5, 6});
    typename TypeParam::Made copy(this->element());
    Matrix matrix = translationBy(1, 1, 1);
    this->element().ApplyTransform(matrix.Columns);
    EXPECT_EQ(copy.GetVertices(), (Floats{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(extremaOf(copy), (Extrema{1, 2, 3, 4, 5, 6}));
    copy = *this->withVertices({7, 8, 9});
    EXPECT_EQ(copy.GetVertices(), (Floats{7, 8, 9}));
    EXPECT_EQ(extremaOf(copy), (Extrema{7, 8, 9, 7, 8, 9}));
}

REGISTER_TYPED_TEST_SUITE_P(
    VerticesTest, HasNoVerticesAtFirst, ApplyTransformIsColumnMajorWithTheTranslationLast,
    ApplyTransformByATranslationMovesEveryVertex, ApplyTransformByTheIdentityKeepsEveryBit,
    ApplyTransformLeavesTheExtremaWhereTheyWere, ApplyTransformLeavesATrailingPartOfATripleAlone,
    ApplyTransformOfNothingIsNothing, ApplyTransformTwiceIsOneAfterTheOther,
    ApplyTransformLeavesTheMatrixAlone, ApplyTransformIsAsExactAsFloatsAre,
    ApplyTransformRoundsEveryStepToAFloat, SetVerticesStoresThemWithTheirExtrema,
    SetVerticesOfOnePointHasItAsBothExtrema, SetVerticesOfLessThanATripleChangesNothing,
    SetVerticesStoresATrailingPartOfATripleButDoesNotLookAtIt, ASecondSetVerticesAppends,
    ASecondSetVerticesLooksAtTheFirstStoredPoints,
    ASecondSetVerticesOfOnePointForgetsTheEarlierExtrema,
    ASecondSetVerticesOfMorePointsReachesTheNewOnes,
    ATrailingPartShiftsTheTriplesOfASecondSetVertices, SetVerticesOfItsOwnVerticesDoublesThem,
    AFirstPointOfNaNKeepsTheExtremaNaN, ALaterPointOfNaNIsPassedOver,
    ExtremaOfRandomVerticesAreTheirRange, ExtremaAreToTheBitThoseOfOnePointAfterAnother,
    SetVerticesStoresManyFloatsOneByOne, GetVerticesIsTheStoredArray,
    RemoveTransparencyMakesTheColorOpaque, RemoveTransparencyGivesNoColor,
    CopiesHaveVerticesAndExtremaOfTheirOwn);

}  // namespace KesVizCore::support
