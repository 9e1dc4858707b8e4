#pragma once

/// @file
/// Short words for the tests of the data model: matrices, arrays of floats and their bits.

#include "math/Floats.h"
#include "support/TestLoaders.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore::support {

using Floats = std::vector<float>;
using Extrema = std::array<float, 6>;

/// A matrix as a host hands it over.
struct Matrix {
    float Columns[4][4];
};

/// The matrix of 16 floats in the order in which they lie in memory: column by column.
inline Matrix matrixOf(const std::array<float, 16>& flat) {
    Matrix matrix{};
    for (std::size_t place = 0; place < 16; ++place) {
        matrix.Columns[place / 4][place % 4] = flat[place];
    }
    return matrix;
}

inline Matrix translationBy(float x, float y, float z) {
    return matrixOf({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

inline Matrix scaleBy(float x, float y, float z) {
    return matrixOf({x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}

/// All 16 entries are different, and so are all that they do to a vector; the last row, which is
/// not to be read, would spoil everything.
inline Matrix unevenMatrix() {
    return matrixOf({2, 3, 5, kNaN, 7, 11, 13, kNaN, 17, 19, 23, kNaN, 29, 31, 37, kNaN});
}

inline Matrix randomMatrix(SeededNumbers& numbers) {
    Matrix matrix{};
    for (auto& column : matrix.Columns) {
        for (float& entry : column) {
            entry = numbers.FloatBetween(-10.0, 10.0);
        }
    }
    return matrix;
}

/// What becomes of a point (@p translates) or a vector, in long double.
inline LongVector transformed(const Matrix& matrix, const Vector& v, bool translates) {
    LongVector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            result[row] += static_cast<long double>(matrix.Columns[column][row]) *
                           static_cast<long double>(v[column]);
        }
        result[row] += translates ? static_cast<long double>(matrix.Columns[3][row]) : 0.0L;
    }
    return result;
}

/// By how much floats may miss that: four roundings of the sum of the magnitudes.
inline LongVector roundingOf(const Matrix& matrix, const Vector& v) {
    LongVector result{};
    for (std::size_t row = 0; row < 3; ++row) {
        long double size = std::fabs(static_cast<long double>(matrix.Columns[3][row]));
        for (std::size_t column = 0; column < 3; ++column) {
            size += std::fabs(static_cast<long double>(matrix.Columns[column][row]) *
                              static_cast<long double>(v[column]));
        }
        result[row] = size * 4.0L * 0x1p-24L;
    }
    return result;
}

inline std::vector<std::uint32_t> bitsOf(const Floats& floats) {
    std::vector<std::uint32_t> bits;
    for (const float value : floats) {
        bits.push_back(KesVizCore::bitsOf(value));
    }
    return bits;
}

/// What the element's GetExtrema writes.
template <typename Element>
Extrema extremaOf(const Element& element) {
    Extrema extrema;
    extrema.fill(-99.0F);
    element.GetExtrema(extrema.data());
    return extrema;
}

/// The three floats at a place.
inline Vector tripleAt(const float* place) {
    return {place[0], place[1], place[2]};
}

/// Whether hosts may call T's ApplyTransform.
template <typename T, typename = void>
struct HasPublicTransform : std::false_type {};
template <typename T>
struct HasPublicTransform<
    T, std::void_t<decltype(std::declval<T&>().ApplyTransform(std::declval<float (*)[4]>()))>>
    : std::true_type {};

}  // namespace KesVizCore::support
