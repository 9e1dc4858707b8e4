/// @file
/// Floats and doubles for fuzz targets: plain ones, every bit pattern, and those at which a
/// tolerance decides.
#pragma once

#include "Input.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace Fuzz {

template <typename Real>
using BitsOf = std::conditional_t<sizeof(Real) == 4, std::uint32_t, std::uint64_t>;

template <typename Real>
BitsOf<Real> Bits(Real value) {
    BitsOf<Real> bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Zeros of different sign differ. A NaN equals every other: which of two operands hands on its
/// bits is the compiler's choice.
template <typename Real>
bool Same(Real a, Real b) {
    return Bits(a) == Bits(b) || (std::isnan(a) && std::isnan(b));
}

template <typename Real>
bool Same(const Real* a, const Real* b, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!Same(a[i], b[i])) {
            return false;
        }
    }
    return true;
}

inline void CheckSame(const float* answered, const float* expected, std::size_t count,
                      const char* what) {
    Check(Same(answered, expected, count), what);
}

template <typename Real>
class Numbers {
public:
    explicit Numbers(Input& input) : _input(input) {}

    /// One number; often one that was drawn before, or its neighbour.
    Real Next() {
        const Real number = Draw();
        _drawn.push_back(number);
        return number;
    }

    void Fill(Real* numbers, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            numbers[i] = Next();
        }
    }

private:
    Real Draw() {
        switch (_input.Below(8)) {
            case 0:
            case 1:
                return static_cast<Real>(_input.Any<std::int8_t>());
            case 2:
                return static_cast<Real>(_input.Any<std::int8_t>()) / Real{16};
            case 3:
                return Neighbour(Special(), _input.Any<std::int8_t>());
            case 4:
                return _input.Any<Real>();
            case 5:
                return Earlier();
            case 6:
                return Neighbour(Earlier(), _input.Any<std::int8_t>());
            default: {
                const Real digits = static_cast<Real>(_input.Any<std::int16_t>());
                return std::ldexp(digits, _input.Any<std::int8_t>());
            }
        }
    }

    Real Earlier() {
        if (_drawn.empty()) {
            return 0;
        }
        const unsigned choice = _input.Byte();
        const Real number = _drawn[_drawn.size() - 1 - choice / 2 % _drawn.size()];
        return choice % 2 == 0 ? number : -number;
    }

    Real Special() {
        using Limits = std::numeric_limits<Real>;
        const Real specials[] = {0,
                                 1,
                                 Real{0.9999999F},
                                 Real{1.0000001F},
                                 Real{1e-6F},
                                 Real{1e-7F},
                                 Real{1e-9F},
                                 Real{3.1415925F},
                                 Limits::infinity(),
                                 Limits::quiet_NaN(),
                                 Limits::max(),
                                 Limits::min(),
                                 Limits::denorm_min(),
                                 static_cast<Real>(1e-6),
                                 static_cast<Real>(0.9999999),
                                 std::sqrt(Limits::max())};
        const unsigned choice = _input.Below(2 * std::size(specials));
        const Real number = specials[choice / 2];
        return choice % 2 == 0 ? number : -number;
    }

    /// The number that many representable ones away, away from zero for positive steps.
    static Real Neighbour(Real number, int steps) {
        auto bits = Bits(number);
        bits += static_cast<decltype(bits)>(steps);
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }

    Input& _input;
    std::vector<Real> _drawn;
};

/// The numbers of a difference, to be read and to be typed again.
template <typename Real>
std::string Shown(const Real* numbers, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        char number[40];
        std::snprintf(number, sizeof number, " %.17g (%a)", double{numbers[i]}, double{numbers[i]});
        text += number;
    }
    return text;
}

}  // namespace Fuzz
