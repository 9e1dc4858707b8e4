#pragma once

/// @file
/// Real files that are no part of the project; KESVIEW_DATA names their folder.

#include <cstdlib>
#include <string>

/// Skips the running test where the folder is not known.
#define KESVIEW_NEEDS_DATA()                                                            \
    if (std::getenv("KESVIEW_DATA") == nullptr) {                                       \
        GTEST_SKIP() << "set KESVIEW_DATA to the folder of real CAD files to run this"; \
    }

namespace kesview {

inline std::string realFile(const std::string& name) {
    const char* folder = std::getenv("KESVIEW_DATA");
    return folder == nullptr ? name : std::string(folder) + "/" + name;
}

}  // namespace kesview
