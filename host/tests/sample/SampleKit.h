#pragma once

/// @file
/// What the tests of the bundled sample share.

#include <string>

namespace kesview::support {

/// The sample's path.
inline std::string sampleFile() {
    return KESVIEW_SAMPLE_FILE;
}

}  // namespace kesview::support
