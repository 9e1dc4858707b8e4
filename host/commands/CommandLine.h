#pragma once

/// @file
/// From arguments to a verb and to the exit code.

#include "commands/ExitCode.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <string>
#include <vector>

namespace kesview {

/// Runs "kesview @p arguments". Throws nothing: every error becomes one line on the error stream
/// and an exit code. That the data stream took everything is the caller's to check.
ExitCode runKesview(const std::vector<std::string>& arguments, const Tools& tools,
                    Streams& streams);

}  // namespace kesview
