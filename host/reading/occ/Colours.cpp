/// @file
/// See Colours.h.

#include "reading/occ/Colours.h"

#include <Quantity_ColorRGBA.hxx>
#include <TDF_Label.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <algorithm>
#include <cmath>

namespace kesview {

namespace {

std::uint8_t byteOf(double fraction) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(fraction, 0.0, 1.0) * 255));
}

std::optional<Color> colorOfType(const Handle(XCAFDoc_ColorTool) & colors, const TDF_Label& label,
                                 XCAFDoc_ColorType type) {
    Quantity_ColorRGBA color;
    if (!colors->GetColor(label, type, color)) {
        return std::nullopt;
    }
    return colorOf(color);
}

}  // namespace

Color colorOf(const Quantity_ColorRGBA& color) {
    double red = 0;
    double green = 0;
    double blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    return {byteOf(red), byteOf(green), byteOf(blue), byteOf(static_cast<double>(color.Alpha()))};
}

std::optional<Color> surfaceColor(const Handle(XCAFDoc_ColorTool) & colors,
                                  const TDF_Label& label) {
    const auto color = colorOfType(colors, label, XCAFDoc_ColorSurf);
    return color ? color : colorOfType(colors, label, XCAFDoc_ColorGen);
}

std::optional<Color> curveColor(const Handle(XCAFDoc_ColorTool) & colors, const TDF_Label& label) {
    return colorOfType(colors, label, XCAFDoc_ColorCurv);
}

}  // namespace kesview
