#pragma once

/// @file
/// The JSON that every verb writes: keys in a fixed order, no number that JSON does not know, and
/// plain ASCII, so that no name of a file reaches a terminal unescaped.

#include "document/Document.h"

#include <nlohmann/json.hpp>
#include <string>

namespace kesview {

using Json = nlohmann::ordered_json;

/// Raised when a key goes or changes its meaning; new keys leave it as it is.
constexpr int schemaVersion = 1;

/// The beginning of every answer: schemaVersion and verb.
Json startJson(const std::string& verb);
/// Indented by 2, with a line feed at the end.
std::string jsonText(const Json& json);

/// Null where it is not finite.
Json jsonNumber(double number);
Json jsonVector(const Vector& vector);
/// Null for an empty text.
Json jsonOrNull(const std::string& text);

}  // namespace kesview
