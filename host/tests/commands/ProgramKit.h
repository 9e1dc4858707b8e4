#pragma once

/// @file
/// Runs the program kesview as a shell would.

#include <chrono>
#include <string>
#include <vector>

namespace kesview::support {

struct ProgramAnswer {
    int code = -1;  ///< the exit code; minus the signal's number where one ended it
    bool hung = false;
    std::string out;
    std::string err;
};

struct ProgramRun {
    std::vector<std::string> arguments;
    std::string output;  ///< a path that takes the data stream instead; empty for none
    int signal = 0;      ///< that is sent after signalAfter
    std::chrono::milliseconds signalAfter{0};
    std::chrono::seconds patience{120};  ///< after which it is killed, and hung is true
};

ProgramAnswer runProgram(const ProgramRun& run);
ProgramAnswer runProgram(const std::vector<std::string>& arguments);

}  // namespace kesview::support
