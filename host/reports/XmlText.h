#pragma once

/// @file
/// What XML cannot hold, written so that it can be read: nothing is dropped, and no two texts
/// become the same.

#include <string>

namespace kesview {

/// UTF-8 of @p text. Characters that XML forbids stand as \u{1}, their number in hexadecimal, and a
/// backslash that would read as the start of such a number as \u{5C}. The first character of a text
/// of blanks alone is written so, too, as readers drop such texts.
std::string toXmlText(const std::wstring& text);

/// The same for an attribute's value, where blanks alone are safe.
std::string toXmlValue(const std::wstring& text);

/// The same for a comment, where also the second of two hyphens, and one at the end, is a number.
std::string toXmlComment(const std::wstring& text);

/// The text of which toXmlText(), toXmlValue() or toXmlComment() made @p written.
std::wstring fromXmlText(const std::string& written);

/// @p name as the name of an element or attribute. Bytes that cannot stand there are _x20_, their
/// number in hexadecimal, and an underscore that would read as the start of one is _x5F_.
std::string toXmlName(const std::string& name);

/// The name of which toXmlName() made @p written.
std::string fromXmlName(const std::string& written);

/// The shortest decimal that reads back as exactly @p value; "nan", "inf" and "-inf".
std::string toXmlNumber(double value);

}  // namespace kesview
