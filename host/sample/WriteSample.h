#pragma once

/// @file
/// Writes the sample that comes with the program.

#include <string>

namespace kesview {

/// The sample as an exchange file: the same bytes whenever a process makes it first. Throws
/// std::runtime_error where Open CASCADE cannot make it.
std::string makeSample();

}  // namespace kesview
