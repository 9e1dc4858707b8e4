#include "math/Floats.h"

#include <KesVizCore/model/VizBox.h>
#include <KesVizCore/model/VizTransf.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

namespace KesVizCore {
namespace {

using Triple = std::array<double, 3>;
using Rows = std::array<Triple, 3>;

constexpr double kDoubleNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Rows kIdentity = {{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
constexpr Rows kUneven = {{{2.0, 3.0, 5.0}, {7.0, 11.0, 13.0}, {17.0, 19.0, 23.0}}};

/// The rows as a host hands them over.
struct Affine {
    explicit Affine(const Rows& rows) {
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                Entries[row][column] = rows[row][column];
            }
        }
    }
    double Entries[3][3];
};

VizTransf transfOf(const Rows& rows) {
    return VizTransf(Affine(rows).Entries);
}

VizTransf transfOf(const Rows& rows, const Triple& translation) {
    return VizTransf(Affine(rows).Entries, translation.data());
}

VizTransf translationOf(const Triple& translation) {
    return VizTransf(translation.data());
}

VizTransf scaleOf(double scale) {
    return VizTransf(scale);
}

Rows affineOf(const VizTransf& transf) {
    double entries[3][3];
    transf.GetAffine(entries);
    Rows rows{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            rows[row][column] = entries[row][column];
        }
    }
    return rows;
}

Triple translationOf(const VizTransf& transf) {
    Triple translation{-99.0, -99.0, -99.0};
    transf.GetTranslation(translation.data());
    return translation;
}

std::array<double, 16> arrayOf(const VizTransf& transf) {
    std::array<double, 16> array{};
    array.fill(-99.0);
    transf.AsArray(array.data());
    return array;
}

void expectBox(const VizBox& box, const Triple& low, const Triple& high) {
    Triple corner{};
    EXPECT_FALSE(box.IsEmpty());
    box.GetLow(corner.data());
    EXPECT_EQ(corner, low);
    box.GetHigh(corner.data());
    EXPECT_EQ(corner, high);
}

TEST(VizTransfTest, IsTheIdentityByDefault) {
    const VizTransf transf;
    EXPECT_EQ(affineOf(transf), kIdentity);
    EXPECT_EQ(translationOf(transf), (Triple{0.0, 0.0, 0.0}));
    EXPECT_TRUE(transf.IsIdentity());
}

TEST(VizTransfTest, StoresArrayAndTranslationAsGiven) {
    const VizTransf transf = transfOf(kUneven, {29.0, 31.0, 37.0});
    EXPECT_EQ(affineOf(transf), kUneven);
    EXPECT_EQ(translationOf(transf), (Triple{29.0, 31.0, 37.0}));
}

TEST(VizTransfTest, StoresAnArrayWithoutATranslation) {
    const VizTransf transf = transfOf(kUneven);
    EXPECT_EQ(affineOf(transf), kUneven);
    EXPECT_EQ(translationOf(transf), (Triple{0.0, 0.0, 0.0}));
}

TEST(VizTransfTest, StoresATranslationWithTheIdentityArray) {
    const VizTransf transf = translationOf(Triple{29.0, 31.0, 37.0});
    EXPECT_EQ(affineOf(transf), kIdentity);
    EXPECT_EQ(translationOf(transf), (Triple{29.0, 31.0, 37.0}));
}

TEST(VizTransfTest, StoresAScaleOnTheDiagonal) {
    const VizTransf transf = scaleOf(2.5);
    EXPECT_EQ(affineOf(transf), (Rows{{{2.5, 0.0, 0.0}, {0.0, 2.5, 0.0}, {0.0, 0.0, 2.5}}}));
    EXPECT_EQ(translationOf(transf), (Triple{0.0, 0.0, 0.0}));
}

TEST(VizTransfTest, WritesTheArrayAndNothingBehindIt) {
    struct {
        double Entries[3][3];
        double Behind;
    } out{{}, -99.0};
    transfOf(kUneven, {29.0, 31.0, 37.0}).GetAffine(out.Entries);
    EXPECT_EQ(out.Entries[2][2], 23.0);
    EXPECT_EQ(out.Behind, -99.0);
}

TEST(VizTransfTest, CopiesAreWholeCopies) {
    const VizTransf transf = transfOf(kUneven, {29.0, 31.0, 37.0});
    VizTransf copy(transf);
    EXPECT_EQ(arrayOf(copy), arrayOf(transf));
    EXPECT_FALSE(copy.IsIdentity());
    copy = VizTransf();
    EXPECT_EQ(arrayOf(copy), arrayOf(VizTransf()));
    EXPECT_TRUE(copy.IsIdentity());
    EXPECT_EQ(affineOf(transf), kUneven);
}

TEST(VizTransfTest, AsArrayWritesTheRowsOneAfterTheOther) {
    EXPECT_EQ(arrayOf(transfOf(kUneven, {29.0, 31.0, 37.0})),
              (std::array<double, 16>{2.0, 3.0, 5.0, 0.0, 7.0, 11.0, 13.0, 0.0, 17.0, 19.0, 23.0,
                                      0.0, 29.0, 31.0, 37.0, 1.0}));
}

TEST(VizTransfTest, AsArrayOfTheDefaultIsTheIdentity) {
    EXPECT_EQ(arrayOf(VizTransf()),
              (std::array<double, 16>{1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0,
                                      0.0, 0.0, 0.0, 1.0}));
}

TEST(VizTransfTest, ATranslationByNothingIsTheIdentity) {
    EXPECT_TRUE(translationOf(Triple{0.0, 0.0, 0.0}).IsIdentity());
    EXPECT_TRUE(translationOf(Triple{-0.0, 0.0, -0.0}).IsIdentity());
}

TEST(VizTransfTest, ATranslationByAnythingElseIsNotTheIdentity) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (const double amount :
             {1.0, -1.0, 1e-300, 5e-324, kDoubleNaN, std::numeric_limits<double>::infinity()}) {
            SCOPED_TRACE(std::to_string(axis) + ": " + std::to_string(amount));
            Triple translation = {0.0, 0.0, 0.0};
            translation[axis] = amount;
            EXPECT_FALSE(translationOf(translation).IsIdentity());
        }
    }
}

TEST(VizTransfTest, OnlyAScaleOfExactlyOneIsTheIdentity) {
    EXPECT_TRUE(scaleOf(1.0).IsIdentity());
    for (const double scale : {0.0, -1.0, 2.0, std::nextafter(1.0, 0.0), std::nextafter(1.0, 2.0),
                               kDoubleNaN, std::numeric_limits<double>::infinity()}) {
        SCOPED_TRACE(scale);
        EXPECT_FALSE(scaleOf(scale).IsIdentity());
    }
}

TEST(VizTransfTest, NoArrayMakesTheIdentityNotEvenThatOfTheIdentity) {
    // Kept so: on the diagonal an entry must be both 1 and 0 to pass.
    EXPECT_FALSE(transfOf(kIdentity).IsIdentity());
    EXPECT_FALSE(transfOf(kIdentity, {0.0, 0.0, 0.0}).IsIdentity());
    EXPECT_FALSE(transfOf(kIdentity, {1.0, 0.0, 0.0}).IsIdentity());
    EXPECT_FALSE(transfOf(Rows{}).IsIdentity());
    EXPECT_FALSE(transfOf(Rows{}, {0.0, 0.0, 0.0}).IsIdentity());
    EXPECT_FALSE(transfOf(kUneven).IsIdentity());
    Rows spoilt = kIdentity;
    spoilt[1][1] = kDoubleNaN;
    EXPECT_FALSE(transfOf(spoilt).IsIdentity());
}

TEST(VizTransfTest, TheDefaultMovesABox) {
    // Kept so: the matrix that multiplies lacks the zero behind each column.
    const Triple low = {1.0, 2.0, 3.0};
    const Triple high = {4.0, 5.0, 6.0};
    expectBox(VizTransf() * VizBox(low.data(), high.data()), {7.0, 0.0, 0.0}, {16.0, 0.0, 0.0});
}

/// What becomes of a corner, written out entry by entry. Packed without gaps, the diagonal falls
/// into the first row of the matrix that multiplies, and two components of the translation into
/// its third column.
Triple movedCorner(const Rows& affine, const Triple& translation, const Triple& corner) {
    const auto [x, y, z] = corner;
    return {affine[0][0] * x + affine[1][1] * y + affine[2][2] * z + 1.0,
            affine[1][0] * x + affine[2][1] * y + translation[0] * z,
            affine[2][0] * x + affine[0][2] * y + translation[1] * z};
}

TEST(VizTransfTest, ABoxIsMultipliedByThePackedArray) {
    const Triple low = {1.0, 10.0, 100.0};
    const Triple high = {2.0, -20.0, 300.0};
    const Triple translation = {29.0, 31.0, 37.0};
    const VizBox box(low.data(), high.data());
    expectBox(transfOf(kUneven, translation) * box,
              {2.0 + 110.0 + 2300.0 + 1.0, 7.0 + 190.0 + 2900.0, 17.0 + 50.0 + 3100.0},
              {4.0 - 220.0 + 6900.0 + 1.0, 14.0 - 380.0 + 8700.0, 34.0 - 100.0 + 9300.0});
    expectBox(transfOf(kUneven, translation) * box, movedCorner(kUneven, translation, low),
              movedCorner(kUneven, translation, high));
}

TEST(VizTransfTest, RandomBoxesAreMultipliedByThePackedArray) {
    SeededNumbers numbers(52);
    const auto whole = [&numbers] { return std::floor(numbers.Between(-1000.0, 1000.0)); };
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Rows affine{};
        for (Triple& row : affine) {
            row = {whole(), whole(), whole()};
        }
        const Triple translation = {whole(), whole(), whole()};
        const Triple low = {whole(), whole(), whole()};
        const Triple high = {whole(), whole(), whole()};
        // Whole numbers, so that nothing is rounded.
        expectBox(transfOf(affine, translation) * VizBox(low.data(), high.data()),
                  movedCorner(affine, translation, low), movedCorner(affine, translation, high));
    }
}

TEST(VizTransfTest, TheThirdComponentOfTheTranslationMovesNoBox) {
    const Triple low = {1.0, 2.0, 3.0};
    const Triple high = {4.0, 5.0, 6.0};
    expectBox(translationOf(Triple{0.0, 0.0, 50.0}) * VizBox(low.data(), high.data()),
              {7.0, 0.0, 0.0}, {16.0, 0.0, 0.0});
}

TEST(VizTransfTest, TheCornersOfAMovedBoxAreNotSorted) {
    const Triple low = {1.0, 1.0, 1.0};
    const Triple high = {2.0, 2.0, 2.0};
    expectBox(scaleOf(-1.0) * VizBox(low.data(), high.data()), {-2.0, 0.0, 0.0}, {-5.0, 0.0, 0.0});
}

TEST(VizTransfTest, AnEmptyBoxMovedIsNotEmpty) {
    expectBox(VizTransf() * VizBox(), {1.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
}

TEST(VizTransfTest, MovingABoxLeavesItAlone) {
    const Triple low = {1.0, 2.0, 3.0};
    const Triple high = {4.0, 5.0, 6.0};
    const VizBox box(low.data(), high.data());
    static_cast<void>(VizTransf() * box);
    expectBox(box, low, high);
}

}  // namespace
}  // namespace KesVizCore
