#pragma once

/// @file
/// What the program answers to the shell.

namespace kesview {

enum class ExitCode : int {
    Done = 0,
    Findings = 1,    ///< check and diff: there is something to look at
    Usage = 2,       ///< options or selectors that mean nothing
    Unreadable = 3,  ///< a file cannot be read, or the output cannot be written
    UnknownFormat = 4,
    Damaged = 5,
    CannotDraw = 6,
    LimitReached = 7,  ///< of time, memory or size
    Interrupted = 130
};

}  // namespace kesview
