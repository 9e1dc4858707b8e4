#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using Doubles = std::vector<double>;

const Doubles kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// 16 numbers first, first + 1, ...
template <typename Real>
std::vector<Real> countedFrom(Real first) {
    std::vector<Real> values(16);
    std::iota(values.begin(), values.end(), first);
    return values;
}

Doubles matrixOf(const VizPMIContainer& container) {
    const double* const matrix = container.GetMatrix();
    return matrix == nullptr ? Doubles() : Doubles(matrix, matrix + 16);
}

/// The matrix after @p count of 16 doubles, and after the same floats, which must agree.
Doubles matrixAfter(int count) {
    VizPMIContainer fromDoubles(1);
    VizPMIContainer fromFloats(1);
    for (const int all : {16, count}) {  // nothing of a matrix before is left
        const double first = all == count ? 2 : 50;
        fromDoubles.SetMatrix(countedFrom(first).data(), all);
        fromFloats.SetMatrix(countedFrom(static_cast<float>(first)).data(), all);
    }
    EXPECT_EQ(matrixOf(fromDoubles), matrixOf(fromFloats)) << count << " numbers";
    return matrixOf(fromDoubles);
}

TEST(PMIContainerMatrixTest, ThereIsNoneAtFirst) {
    EXPECT_EQ(VizPMIContainer(1).GetMatrix(), nullptr);
}

TEST(PMIContainerMatrixTest, SixteenNumbersStandAsTheyAre) {
    EXPECT_EQ(matrixAfter(16), (Doubles{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST(PMIContainerMatrixTest, NineNumbersFillTheUpperLeftOfTheIdentity) {
    EXPECT_EQ(matrixAfter(9), (Doubles{2, 3, 4, 0, 5, 6, 7, 0, 8, 9, 10, 0, 0, 0, 0, 1}));
}

TEST(PMIContainerMatrixTest, FourNumbersFillTheUpperLeftOfTheIdentity) {
    EXPECT_EQ(matrixAfter(4), (Doubles{2, 3, 0, 0, 4, 5, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(PMIContainerMatrixTest, AnyOtherCountLeavesTheIdentity) {
    for (const int count : {-16, -1, 0, 1, 3, 5, 8, 10, 12, 15, 17, 25}) {
        EXPECT_EQ(matrixAfter(count), kIdentity) << count << " numbers";
    }
}

TEST(PMIContainerMatrixTest, TheNumbersAreNotReadForAnotherCount) {
    VizPMIContainer container(1);
    container.SetMatrix(static_cast<const double*>(nullptr), 12);
    EXPECT_EQ(matrixOf(container), kIdentity);
    container.SetMatrix(static_cast<const float*>(nullptr), 12);
    EXPECT_EQ(matrixOf(container), kIdentity);
}

TEST(PMIContainerMatrixTest, DoublesKeepAllTheirDigits) {
    VizPMIContainer container(1);
    Doubles matrix = countedFrom(0.1);
    matrix[15] = std::numeric_limits<double>::max();
    for (const int count : {16, 9, 4}) {
        container.SetMatrix(matrix.data(), count);
        EXPECT_EQ(container.GetMatrix()[0], 0.1);
    }
    container.SetMatrix(matrix.data(), 16);
    EXPECT_EQ(matrixOf(container), matrix);
}

TEST(PMIContainerMatrixTest, FloatsAreWidened) {
    VizPMIContainer container(1);
    for (const int count : {16, 9, 4}) {
        container.SetMatrix(countedFrom(0.1F).data(), count);
        EXPECT_EQ(container.GetMatrix()[0], double{0.1F});
    }
}

TEST(PMIContainerMatrixTest, TheArrayIsMadeOnce) {
    VizPMIContainer container(1);
    container.SetMatrix(countedFrom(2.0).data(), 16);
    const double* const matrix = container.GetMatrix();
    container.SetMatrix(countedFrom(3.0F).data(), 9);
    EXPECT_EQ(container.GetMatrix(), matrix);
}

TEST(PMIContainerMatrixTest, TheHostMayWriteIntoIt) {
    VizPMIContainer container(1);
    container.SetMatrix(countedFrom(2.0).data(), 16);
    container.GetMatrix()[12] = 7.5;
    EXPECT_EQ(matrixOf(container)[12], 7.5);
}

TEST(PMIContainerMatrixTest, TheMatrixMayBeSetFromItself) {
    VizPMIContainer container(1);
    container.SetMatrix(countedFrom(1.0).data(), 16);
    container.SetMatrix(container.GetMatrix(), 16);
    EXPECT_EQ(matrixOf(container), countedFrom(1.0));
    container.SetMatrix(container.GetMatrix(), 9);
    EXPECT_EQ(matrixOf(container), (Doubles{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}));
}

}  // namespace
}  // namespace KesVizCore
