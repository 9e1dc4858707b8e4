#include <KesVizCore/core/RGBAColor.h>

#include <cstddef>
#include <cwchar>

namespace KesVizCore {

namespace {

constexpr unsigned short kOpaque = 255;

std::uint8_t clampedChannel(unsigned short value) {
    return static_cast<std::uint8_t>(value < 256 ? value : 255);
}

/// Written with "greater" alone, so that a NaN falls through to 0.
std::uint8_t channelFromFloat(float value) {
    const float scaled = value * 255.0F;
    if (scaled >= 255.0F) {
        return 255;
    }
    return scaled > 0.0F ? static_cast<std::uint8_t>(scaled) : std::uint8_t{0};
}

unsigned short scaledChannel(double k, std::uint8_t channel) {
    const double product = k * channel;
    if (product != product) {
        return 0;
    }
    constexpr double belowLowest = -2147483649.0;
    constexpr double aboveHighest = 2147483648.0;
    if (product <= belowLowest || product >= aboveHighest) {
        return kOpaque;
    }
    return static_cast<unsigned short>(static_cast<std::int32_t>(product));
}

std::uint32_t packed(std::uint32_t alpha, const RGBAColor& color) {
    return alpha << 24U | std::uint32_t{color.GetRed()} << 16U |
           std::uint32_t{color.GetGreen()} << 8U | std::uint32_t{color.GetBlue()};
}

}  // namespace

RGBAColor::RGBAColor() : RGBAColor(255, 255, 255, kOpaque) {}

RGBAColor::RGBAColor(unsigned short r, unsigned short g, unsigned short b, unsigned short a)
    : _red(clampedChannel(r)),
      _green(clampedChannel(g)),
      _blue(clampedChannel(b)),
      _alpha(clampedChannel(a)) {}

RGBAColor::RGBAColor(float* const rgba)
    : _red(channelFromFloat(rgba[0])),
      _green(channelFromFloat(rgba[1])),
      _blue(channelFromFloat(rgba[2])),
      _alpha(channelFromFloat(rgba[3])) {}

RGBAColor RGBAColor::Black() {
    return RGBAColor(0, 0, 0, 0);
}
RGBAColor RGBAColor::Red() {
    return RGBAColor(255, 0, 0, 0);
}
RGBAColor RGBAColor::Green() {
    return RGBAColor(0, 255, 0, 0);
}
RGBAColor RGBAColor::Blue() {
    return RGBAColor(0, 0, 255, 0);
}
RGBAColor RGBAColor::Cyan() {
    return RGBAColor(0, 255, 255, 0);
}
RGBAColor RGBAColor::Yellow() {
    return RGBAColor(255, 255, 0, 0);
}
RGBAColor RGBAColor::Magenta() {
    return RGBAColor(255, 0, 255, 0);
}
RGBAColor RGBAColor::White() {
    return RGBAColor(255, 255, 255, 0);
}

bool RGBAColor::IsOpaque() const {
    return _alpha == kOpaque;
}

void RGBAColor::ToFloatArray(float* const out) const {
    out[0] = static_cast<float>(_red / 255.0);
    out[1] = static_cast<float>(_green / 255.0);
    out[2] = static_cast<float>(_blue / 255.0);
    out[3] = static_cast<float>(_alpha / 255.0);
}

int RGBAColor::ToInt32() const {
    return static_cast<std::int32_t>(packed(_alpha, *this));
}

int RGBAColor::ToPositiveInt() const {
    const std::uint32_t word = packed(_alpha / 2U, *this);
    return static_cast<std::int32_t>(word != 0 ? word : packed(1U, *this));
}

void RGBAColor::ToHexString(std::wstring& out) const {
    constexpr std::size_t width = 8;
    wchar_t text[width + 1];
    std::swprintf(text, width + 1, L"%8x", packed(_alpha, *this));
    out = text;
}

bool RGBAColor::operator==(const RGBAColor& other) const {
    return packed(_alpha, *this) == packed(other._alpha, other);
}

bool RGBAColor::operator!=(const RGBAColor& other) const {
    return !(*this == other);
}

void RGBAColor::operator=(const RGBAColor& other) {
    _red = other._red;
    _green = other._green;
    _blue = other._blue;
    _alpha = other._alpha;
}

RGBAColor operator+(const RGBAColor& a, const RGBAColor& b) {
    const auto sum = [](std::uint8_t one, std::uint8_t other) {
        return static_cast<unsigned short>(one + other);
    };
    return RGBAColor(sum(a.GetRed(), b.GetRed()), sum(a.GetGreen(), b.GetGreen()),
                     sum(a.GetBlue(), b.GetBlue()), sum(a.GetAlpha(), b.GetAlpha()));
}

RGBAColor operator*(double k, const RGBAColor& c) {
    return RGBAColor(scaledChannel(k, c.GetRed()), scaledChannel(k, c.GetGreen()),
                     scaledChannel(k, c.GetBlue()), scaledChannel(k, c.GetAlpha()));
}

}  // namespace KesVizCore
