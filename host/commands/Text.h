#pragma once

/// @file
/// Texts and numbers for people: names from files are never trusted with the terminal.

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

/// On one line, without anything that a terminal would obey: control characters, invisible
/// changes of direction and what is no UTF-8 are spelled out, "\x1b", "\u{202e}".
std::string plainText(const std::string& utf8);

/// Millimetres with as many digits as mean something: "12.5", "0.0003", "1e+100".
std::string lengthText(double millimetres);
/// "1, 2.5, 3"
std::string vectorText(const Vector& vector);
/// "#rrggbb", with two more digits where it is not opaque.
std::string colorText(const Color& color);
/// "1 face", "2 faces", "2 bodies".
std::string countText(std::uint64_t count, const std::string& singular, const std::string& plural);

/// Filled with blanks to @p width characters, or longer.
std::string padRight(const std::string& text, std::size_t width);
std::string padLeft(const std::string& text, std::size_t width);
/// In characters, not bytes.
std::size_t textWidth(const std::string& utf8);

std::string join(const std::vector<std::string>& texts, const std::string& separator);

std::string nameOf(BodyKind kind);
std::string nameOf(AnnotationKind kind);
std::string nameOf(EntityLink::Kind kind);
std::string nameOf(Finding::Severity severity);

}  // namespace kesview
