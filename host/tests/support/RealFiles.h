#pragma once

/// @file
/// Real CAD files that are no part of the project; KESVIEW_DATA names their folder.

#include <gtest/gtest.h>

#include <string>

/// Skips the running test where the folder is not known; also in SetUp.
#define KESVIEW_NEEDS_DATA()                                              \
    if (::kesview::support::realFolder().empty()) {                       \
        GTEST_SKIP() << "KESVIEW_DATA names no folder of real CAD files"; \
    }

namespace kesview::support {

/// Empty where KESVIEW_DATA is not set, or set to nothing.
std::string realFolder();
std::string realFile(const std::string& name);

}  // namespace kesview::support
