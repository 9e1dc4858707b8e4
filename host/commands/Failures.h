#pragma once

/// @file
/// From what was thrown to the exit code.

#include "commands/ExitCode.h"
#include "commands/Streams.h"

#include <functional>

namespace kesview {

/// The answer of @p work; or, where it throws, one line on the error stream and the code of the
/// failure.
ExitCode answerFailures(Streams& streams, const std::function<ExitCode()>& work);

}  // namespace kesview
