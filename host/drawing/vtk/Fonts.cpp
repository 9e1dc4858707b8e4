#include "drawing/vtk/Fonts.h"

#include "drawing/vtk/FontFiles.h"
#include "drawing/vtk/Outline.h"

#include <cstdint>
#include <ft2build.h>
#include <optional>
#include <spdlog/spdlog.h>
#include <stdexcept>
#include <string>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace kesview {
namespace {

using Point = std::array<double, 2>;

/// Follows the outline of a letter and flattens its curves.
class ContourMaker {
public:
    explicit ContourMaker(double scale) : _scale(scale) {}

    void MoveTo(const FT_Vector& to) {
        contours.emplace_back();
        contours.back().push_back(toPoint(to));
    }

    void LineTo(const FT_Vector& to) { contours.back().push_back(toPoint(to)); }

    void CurveTo(const FT_Vector& control, const FT_Vector& to) {
        const Point a = contours.back().back();
        const Point b = toPoint(control);
        const Point c = toPoint(to);
        for (int i = 1; i <= steps; ++i) {
            const double t = double(i) / steps;
            contours.back().push_back(mix(mix(a, b, t), mix(b, c, t), t));
        }
    }

    void CurveTo(const FT_Vector& control1, const FT_Vector& control2, const FT_Vector& to) {
        const Point a = contours.back().back();
        const Point b = toPoint(control1);
        const Point c = toPoint(control2);
        const Point d = toPoint(to);
        for (int i = 1; i <= steps; ++i) {
            const double t = double(i) / steps;
            const Point middle = mix(b, c, t);
            contours.back().push_back(
                mix(mix(mix(a, b, t), middle, t), mix(middle, mix(c, d, t), t), t));
        }
    }

    std::vector<Contour> contours;

private:
    static constexpr int steps = 6;

    Point toPoint(const FT_Vector& at) const {
        return {_scale * double(at.x), _scale * double(at.y)};
    }

    static Point mix(const Point& a, const Point& b, double t) {
        return {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])};
    }

    double _scale;
};

std::vector<Contour> contoursOf(FT_Outline& outline, double scale) {
    FT_Outline_Funcs steps = {};
    steps.move_to = [](const FT_Vector* to, void* maker) {
        static_cast<ContourMaker*>(maker)->MoveTo(*to);
        return 0;
    };
    steps.line_to = [](const FT_Vector* to, void* maker) {
        static_cast<ContourMaker*>(maker)->LineTo(*to);
        return 0;
    };
    steps.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* maker) {
        static_cast<ContourMaker*>(maker)->CurveTo(*control, *to);
        return 0;
    };
    steps.cubic_to = [](const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to,
                        void* maker) {
        static_cast<ContourMaker*>(maker)->CurveTo(*control1, *control2, *to);
        return 0;
    };
    ContourMaker maker(scale);
    FT_Outline_Decompose(&outline, &steps, &maker);
    return maker.contours;
}

Glyph emptyBox() {
    constexpr double width = 0.6;
    constexpr double line = 0.08;
    Contour outer = {{0, 0}, {width, 0}, {width, 1}, {0, 1}};
    Contour inner = {
        {line, line}, {line, 1 - line}, {width - line, 1 - line}, {width - line, line}};
    FilledOutline filled = fill({outer, inner});
    return {filled.points, filled.triangles, width + 0.2};
}

/// One library of FreeType for each font: they are few, and each can go on its own.
using Library = std::unique_ptr<FT_LibraryRec_, FT_Error (*)(FT_Library)>;

Library openLibrary() {
    FT_Library library = nullptr;
    FT_Init_FreeType(&library);
    return {library, FT_Done_FreeType};
}

using OpenFace = std::unique_ptr<FT_FaceRec_, FT_Error (*)(FT_Face)>;

}  // namespace

class Fonts::Font {
public:
    explicit Font(const std::string& file) : _library(openLibrary()), _face(nullptr, FT_Done_Face) {
        FT_Face face = nullptr;
        if (_library && FT_New_Face(_library.get(), file.c_str(), 0, &face) == 0)
            _face.reset(face);
        _scale = 1 / capitalHeight();
    }

    std::optional<Glyph> Find(char32_t letter) {
        if (!_face || !load(letter))
            return std::nullopt;
        FilledOutline filled = fill(contoursOf(_face->glyph->outline, _scale));
        return Glyph{std::move(filled.points), std::move(filled.triangles),
                     _scale * double(_face->glyph->metrics.horiAdvance)};
    }

private:
    bool load(char32_t letter) {
        const FT_UInt index = FT_Get_Char_Index(_face.get(), letter);
        return index != 0 && FT_Load_Glyph(_face.get(), index, FT_LOAD_NO_SCALE) == 0 &&
               _face->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
    }

    /// In units of the font.
    double capitalHeight() {
        if (!_face || !load(U'H') || _face->glyph->metrics.height <= 0)
            return 1;
        return double(_face->glyph->metrics.height);
    }

    Library _library;
    OpenFace _face;
    double _scale = 1;
};

Fonts::Fonts() {
    for (const std::string& file : findFontFiles())
        _fonts.push_back(std::make_unique<Font>(file));
    if (_fonts.empty())
        spdlog::warn(
            "Texts are drawn as empty boxes, no font was found: apt-get install fonts-osifont "
            "fonts-dejavu-core fonts-symbola");
}

Fonts::~Fonts() = default;

const Glyph& Fonts::Find(char32_t letter) {
    const auto found = _glyphs.find(letter);
    return found == _glyphs.end() ? make(letter) : found->second;
}

const Glyph& Fonts::make(char32_t letter) {
    for (const std::unique_ptr<Font>& font : _fonts) {
        if (std::optional<Glyph> glyph = font->Find(letter))
            return _glyphs[letter] = std::move(*glyph);
    }
    if (!_fonts.empty())
        spdlog::warn(
            "No font has the letter U+{:04X}, an empty box is drawn: apt-get install "
            "fonts-symbola fonts-dejavu-core",
            std::uint32_t(letter));
    return _glyphs[letter] = emptyBox();
}

}  // namespace kesview
