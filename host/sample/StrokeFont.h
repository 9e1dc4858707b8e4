#pragma once

/// @file
/// Letters as strokes, on a grid of 4 by 6.

namespace kesview {

/// Strokes of a letter: pairs of digits x and y, joined by dashes; a space starts a new stroke.
/// Null for a letter that is not in the font.
const char* strokesOf(char32_t letter);

}  // namespace kesview
