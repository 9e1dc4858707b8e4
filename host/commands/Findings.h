#pragma once

/// @file
/// Findings as every verb writes them.

#include "commands/Json.h"
#include "document/Document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

/// Errors, warnings, notes; within them in their order.
std::vector<Finding> worstFirst(std::vector<Finding> findings);

std::uint64_t countOf(const std::vector<Finding>& findings, Finding::Severity severity);

/// "1 error, 2 warnings, 3 notes"; "none"
std::string findingsSummary(const std::vector<Finding>& findings);

/// "#4711, 3 times": where and how often; empty where neither is to be said.
std::string detailsOf(const Finding& finding);

/// One line: "warning  pmi.no-drawing  A drawing could not be read. (#4711, 3 times)"
std::string findingLine(const Finding& finding, bool colored);

Json toJson(const Finding& finding);

}  // namespace kesview
