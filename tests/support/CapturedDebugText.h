#pragma once

/// @file
/// What the library writes to its debug stream, caught for comparison.

#include <KesVizCore/report/DebugStream.h>

#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace KesVizCore::support {

/// While one lives, dbg writes into it and not to the debugger.
class CapturedDebugText {
public:
    CapturedDebugText() : _before(dbg.rdbuf(&_text)) {}
    ~CapturedDebugText() { dbg.rdbuf(_before); }
    CapturedDebugText(const CapturedDebugText&) = delete;
    CapturedDebugText& operator=(const CapturedDebugText&) = delete;

    /// All that was written since construction.
    std::string Text() const { return _text.str(); }

private:
    std::stringbuf _text;
    std::streambuf* _before;
};

}  // namespace KesVizCore::support
