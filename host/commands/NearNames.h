#pragma once

/// @file
/// What somebody may have meant.

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace kesview {

/// At most three of @p names that differ from @p name in few letters or hold it, nearest first.
std::vector<std::string> nearNames(const std::string& name, const std::set<std::string>& names);

/// " Did you mean \"Bolt\" or \"Bolts\"?", made plain; empty without names.
std::string didYouMean(const std::vector<std::string>& names);

}  // namespace kesview
