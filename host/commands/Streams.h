#pragma once

/// @file
/// Where a verb writes: data to one stream, everything else to the other.

#include <iosfwd>

namespace kesview {

struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;  ///< progress is shown there
    bool colorsOut = false;      ///< severities are coloured
    bool colorsErr = false;
};

}  // namespace kesview
