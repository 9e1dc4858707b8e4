#include "sample/SampleColors.h"

#include <string>

namespace kesview {
namespace {

struct ScreenColor {
    int red;  ///< 0 to 255, as are the next two
    int green;
    int blue;
    double transparency = 0;  ///< 1 is invisible
};

std::string list(const std::string& items) {
    return "(" + items + ")";
}

/// A style for surfaces.
std::string style(ExchangeText& text, const ScreenColor& color) {
    const std::string rgb =
        reference(text.Add("COLOUR_RGB(''," + real(color.red / 255.0) + "," +
                           real(color.green / 255.0) + "," + real(color.blue / 255.0) + ")"));
    const int fillColor = text.Add("FILL_AREA_STYLE_COLOUR(''," + rgb + ")");
    const int fill = text.Add("FILL_AREA_STYLE(''," + list(reference(fillColor)) + ")");
    std::string styles = reference(text.Add("SURFACE_STYLE_FILL_AREA(" + reference(fill) + ")"));
    if (color.transparency > 0) {
        const int clear = text.Add("SURFACE_STYLE_TRANSPARENT(" + real(color.transparency) + ")");
        styles +=
            "," + reference(text.Add("SURFACE_STYLE_RENDERING_WITH_PROPERTIES(.NORMAL_SHADING.," +
                                     rgb + "," + list(reference(clear)) + ")"));
    }
    const int side = text.Add("SURFACE_SIDE_STYLE(''," + list(styles) + ")");
    const int usage = text.Add("SURFACE_STYLE_USAGE(.BOTH.," + reference(side) + ")");
    return reference(text.Add("PRESENTATION_STYLE_ASSIGNMENT(" + list(reference(usage)) + ")"));
}

/// Colours the only body of @p representation; gives the entity that says so.
std::string colorBody(ExchangeText& text, int representation, const ScreenColor& color) {
    const std::string assignment = style(text, color);
    const std::string body = reference(text.Reference(representation, -2));
    return reference(text.Add("STYLED_ITEM('color'," + list(assignment) + "," + body + ")"));
}

std::string colorFace(ExchangeText& text, const std::string& name, const std::string& body,
                      const ScreenColor& color) {
    const std::string assignment = style(text, color);
    const std::string face = reference(text.Find("ADVANCED_FACE('" + name + "',"));
    return reference(text.Add("OVER_RIDING_STYLED_ITEM('overriding color'," + list(assignment) +
                              "," + face + "," + body + ")"));
}

void addPresentation(ExchangeText& text, int representation, const std::string& items) {
    const std::string context = reference(text.Reference(representation, -1));
    text.Add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION(''," + list(items) + "," +
             context + ")");
}

}  // namespace

void addColors(ExchangeText& text) {
    const std::vector<int> parts = text.FindAll("ADVANCED_BREP_SHAPE_REPRESENTATION(");
    const int bracket = parts.at(0);
    const int bolt = parts.at(1);
    const int washer = parts.at(2);

    const std::string body = colorBody(text, bracket, {96, 125, 166});
    const std::string bore = colorFace(text, "Bore", body, {235, 140, 40});
    const std::string front = colorFace(text, "Front of the upright", body, {60, 180, 170, 0.6});
    addPresentation(text, bracket, body + "," + bore + "," + front);
    addPresentation(text, bolt, colorBody(text, bolt, {185, 187, 192}));
    addPresentation(text, washer, colorBody(text, washer, {212, 175, 90}));
}

}  // namespace kesview
