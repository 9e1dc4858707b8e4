#pragma once

/// @file
/// Files that a verb writes.

#include <string>

namespace kesview {

/// Before the work, as nobody should wait to be told: throws UsageError where @p output is the file
/// that is read, and OutputError where its folder is not there.
void checkOutput(const std::string& output, const std::string& input);

}  // namespace kesview
