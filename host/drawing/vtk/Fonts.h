#pragma once

/// @file
/// The fonts that texts are drawn with, as outlines.

#include "view/Picture.h"

#include <map>
#include <memory>
#include <vector>

namespace kesview {

/// A letter filled with triangles. Lengths count in heights of a capital letter; the letter
/// stands on y = 0 and starts at x = 0.
struct Glyph {
    std::vector<std::array<double, 2>> points;
    std::vector<std::uint32_t> triangles;
    double advance = 0;  ///< to where the next letter starts
};

/// Finds each letter in the first font that has it: one made for technical drawings, one for
/// many languages, one for symbols, as far as they are installed.
class Fonts {
public:
    Fonts();
    ~Fonts();
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;

    /// A letter that no font has is an empty box, and the program's log says so, once.
    const Glyph& Find(char32_t letter);

private:
    class Font;

    const Glyph& make(char32_t letter);

    std::vector<std::unique_ptr<Font>> _fonts;
    std::map<char32_t, Glyph> _glyphs;
};

}  // namespace kesview
