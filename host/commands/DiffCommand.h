#pragma once

/// @file
/// kesview diff: in what two scenes differ, each a saved report or a CAD file.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"
#include "reports/Differences.h"

#include <string>
#include <vector>

namespace kesview {

struct DiffResult {
    std::string before;  ///< paths of the two files
    std::string after;
    std::vector<Difference> differences;
};

std::string toText(const DiffResult& result);
std::string toJson(const DiffResult& result);

/// ExitCode::Findings where they differ.
ExitCode diff(const DiffOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
