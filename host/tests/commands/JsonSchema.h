#pragma once

/// @file
/// As much of JSON Schema as the schemas of the verbs use.

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace kesview::support {

/// A line for each violation: path and what is wrong. A keyword that is not known is one as well.
std::string checkJson(const nlohmann::json& value, const nlohmann::json& schema);

}  // namespace kesview::support
