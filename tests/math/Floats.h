#pragma once

/// @file
/// What the tests of the geometry share: points as values, floats as bits, arithmetic that is
/// rounded after every step whatever the compiler makes of it, and seeded numbers.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

namespace KesVizCore {

using Vector = std::array<float, 3>;
using DoubleVector = std::array<double, 3>;
using LongVector = std::array<long double, 3>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

inline std::uint32_t bitsOf(float value) {
    std::uint32_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Tells zeros of different sign apart, and finds a NaN equal to itself.
inline std::array<std::uint32_t, 3> bitsOf(const Vector& v) {
    return {bitsOf(v[0]), bitsOf(v[1]), bitsOf(v[2])};
}

inline float justBelow(float value) {
    return std::nextafter(value, -kInfinity);
}

inline float justAbove(float value) {
    return std::nextafter(value, kInfinity);
}

/// A float whose every operation is carried out in long double and rounded once. With more than
/// twice the digits of a float in between, that is the correctly rounded result.
class Rounded {
public:
    Rounded(float value) : _value(value) {}
    float Value() const { return _value; }

    friend Rounded operator+(Rounded a, Rounded b) { return make(a.wide() + b.wide()); }
    friend Rounded operator-(Rounded a, Rounded b) { return make(a.wide() - b.wide()); }
    friend Rounded operator*(Rounded a, Rounded b) { return make(a.wide() * b.wide()); }
    friend Rounded operator/(Rounded a, Rounded b) { return make(a.wide() / b.wide()); }
    friend Rounded operator-(Rounded a) { return -a._value; }

private:
    static Rounded make(long double value) { return static_cast<float>(value); }
    long double wide() const { return _value; }

    float _value;
};

inline LongVector widened(const Vector& v) {
    return {v[0], v[1], v[2]};
}

inline LongVector sum(const LongVector& a, const LongVector& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline LongVector times(long double factor, const LongVector& v) {
    return {factor * v[0], factor * v[1], factor * v[2]};
}

inline LongVector difference(const LongVector& a, const LongVector& b) {
    return sum(a, times(-1.0L, b));
}

inline long double dot(const LongVector& a, const LongVector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline LongVector cross(const LongVector& a, const LongVector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline long double length(const LongVector& v) {
    return std::sqrt(dot(v, v));
}

/// The sum of the magnitudes: what rounding errors of a sum are measured by.
inline long double magnitude(const LongVector& v) {
    return std::fabs(v[0]) + std::fabs(v[1]) + std::fabs(v[2]);
}

/// The same numbers on every platform, unlike those of the standard distributions.
class SeededNumbers {
public:
    explicit SeededNumbers(std::uint64_t seed) : _engine(seed) {}

    double Between(double low, double high) {
        return low + (high - low) * (static_cast<double>(_engine() >> 11U) * 0x1p-53);
    }
    float FloatBetween(double low, double high) { return static_cast<float>(Between(low, high)); }
    Vector VectorWithin(double bound) {
        return {FloatBetween(-bound, bound), FloatBetween(-bound, bound),
                FloatBetween(-bound, bound)};
    }
    Vector UnitVector() {
        LongVector v{};
        long double size = 0.0L;
        while (size < 0.1L || size > 1.0L) {
            v = widened(VectorWithin(1.0));
            size = length(v);
        }
        return {static_cast<float>(v[0] / size), static_cast<float>(v[1] / size),
                static_cast<float>(v[2] / size)};
    }

private:
    std::mt19937_64 _engine;
};

}  // namespace KesVizCore
