#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// A colour of four 8-bit channels: red, green, blue and alpha.
///
/// @par Units and ranges
/// Each channel is 0 to 255, both included. Alpha 255 is opaque and no other alpha is special.
/// As floats the channels run from 0 to 1.
///
/// @par Errors
/// No operation fails: what lies outside a channel's range is clamped, but for the wrapping of the
/// product with a number, and a NaN counts as 0. Only ToHexString throws std::bad_alloc when memory
/// runs out. Pointers must not be null.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API RGBAColor {
public:
    /// Opaque white.
    RGBAColor();
    /// Channels above 255 are stored as 255.
    RGBAColor(unsigned short r, unsigned short g, unsigned short b, unsigned short a);
    /// From 4 floats, red first: each times 255, truncated toward zero (0.5 gives 127), clamped.
    RGBAColor(float* const rgba);
    RGBAColor(const RGBAColor& other) = default;  ///< all four channels

    /// @name Named colours
    /// All of them have alpha 0, so that none of them is opaque.
    /// @{
    static RGBAColor Black();    ///< (0, 0, 0, 0)
    static RGBAColor Red();      ///< (255, 0, 0, 0)
    static RGBAColor Green();    ///< (0, 255, 0, 0)
    static RGBAColor Blue();     ///< (0, 0, 255, 0)
    static RGBAColor Cyan();     ///< (0, 255, 255, 0)
    static RGBAColor Yellow();   ///< (255, 255, 0, 0)
    static RGBAColor Magenta();  ///< (255, 0, 255, 0)
    static RGBAColor White();    ///< (255, 255, 255, 0)
    /// @}

    /// @name Channels
    /// Red(), Green() and Blue() are named colours, so the channels are read with Get.
    /// @{
    std::uint8_t GetRed() const { return _red; }      ///< 0 to 255
    std::uint8_t GetGreen() const { return _green; }  ///< 0 to 255
    std::uint8_t GetBlue() const { return _blue; }    ///< 0 to 255
    std::uint8_t GetAlpha() const { return _alpha; }  ///< 0 to 255, which is opaque
    /// Same as GetAlpha().
    std::uint8_t Alpha() const { return _alpha; }
    /// @}

    bool IsOpaque() const;  ///< alpha is 255
    /// Writes 4 floats, red first, each channel divided by 255.
    void ToFloatArray(float* const out) const;
    /// The channels as one ARGB word: alpha in bits 24 to 31, blue in bits 0 to 7.
    int ToInt32() const;
    /// A number above 0, fit for a key: ToInt32 with alpha halved, or 16777216 (alpha 1) where
    /// that leaves nothing, as for (0, 0, 0, 0) and (0, 0, 0, 1).
    int ToPositiveInt() const;
    /// Replaces @p out by ToInt32 in lower-case hexadecimal, 8 places wide, padded with blanks.
    void ToHexString(std::wstring& out) const;

    bool operator==(const RGBAColor& other) const;  ///< all four channels equal
    bool operator!=(const RGBAColor& other) const;  ///< the opposite of ==
    /// Returns nothing: assignments of colours do not chain.
    void operator=(const RGBAColor& other);

private:
    std::uint8_t _red;
    std::uint8_t _green;
    std::uint8_t _blue;
    std::uint8_t _alpha;
};

/// The sum channel by channel, alpha included, clamped to 255.
KESVIZCORE_API RGBAColor operator+(const RGBAColor& a, const RGBAColor& b);

/// @p k times each channel, alpha included, truncated toward zero.
///
/// The product passes through an unsigned 16-bit number before it is clamped to 255, and wraps
/// there: -10 becomes 65526 and so 255, but -65531 and 65541 become 5. A product that does not fit
/// 32 bits becomes 255.
KESVIZCORE_API RGBAColor operator*(double k, const RGBAColor& c);

}  // namespace KesVizCore
