#pragma once

/// @file
/// Files that a verb writes.

#include <functional>
#include <string>

namespace kesview {

/// Before the work, as nobody should wait to be told: throws UsageError where @p output is the file
/// that is read, and OutputError where its folder is not there.
void checkOutput(const std::string& output, const std::string& input);

/// Runs @p write, which writes @p output. Signals wait until a file is whole and in its place; they
/// do not wait for a pipe or a device, which may never take what it is given.
void writeOutput(const std::string& output, const std::function<void()>& write);

}  // namespace kesview
