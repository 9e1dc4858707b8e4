#pragma once

/// @file
/// kesview check: what is broken or was lost, worst first.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <string>
#include <vector>

namespace kesview {

struct CheckResult {
    std::string file;
    std::vector<Finding> findings;  ///< worst first
    bool colored = false;
};

std::string toText(const CheckResult& result);
std::string toJson(const CheckResult& result);

/// ExitCode::Findings where there is a warning or an error; notes alone are none.
ExitCode check(const CheckOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
