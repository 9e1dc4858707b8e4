#pragma once

/// @file
/// Ctrl-C, termination and the time limit end the program at once, with the exit code that says so.

#include <chrono>
#include <csignal>

namespace kesview {

/// From now on SIGINT and SIGTERM end the process with 130; a broken pipe and a file that may not
/// grow are errors of the writing stream instead of signals. Readers may take the first two over
/// for a while.
void endOnSignals();

/// Ends the process with 7 a little after @p limit: whoever keeps to the limit by itself is first.
void endAfter(std::chrono::milliseconds limit);

/// While it lives, those signals wait, whatever thread is given them: a file that is being written
/// is written whole.
class SignalsHeld {
public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t _before;
};

}  // namespace kesview
