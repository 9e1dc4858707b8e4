/// @file
/// The program kesview.

#include "commands/CommandLine.h"
#include "commands/DataStream.h"
#include "commands/Signals.h"
#include "picking/PickIndex.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <unistd.h>

namespace {

/// https://no-color.org: set to anything but nothing.
bool wantsColors() {
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (noColor == nullptr || *noColor == '\0') && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0;
}

/// Whoever closed the pipe has read enough, which is no failure.
kesview::ExitCode answerOf(kesview::ExitCode code, int failure, std::ostream& err) {
    if (failure == 0 || failure == EPIPE) {
        return code;
    }
    err << "kesview: error: the output cannot be written: " << std::strerror(failure) << "\n";
    return kesview::ExitCode::Unreadable;
}

}  // namespace

int main(int argc, char** argv) {
    kesview::endOnSignals();
    kesview::DescriptorBuffer outBuffer(STDOUT_FILENO);
    kesview::DescriptorBuffer errBuffer(STDERR_FILENO);
    std::ostream out(&outBuffer);
    std::ostream err(&errBuffer);
    err.setf(std::ios_base::unitbuf);
    const bool colors = wantsColors();
    kesview::Streams streams{out, err, ::isatty(STDERR_FILENO) == 1,
                             colors && ::isatty(STDOUT_FILENO) == 1,
                             colors && ::isatty(STDERR_FILENO) == 1};
    const kesview::Tools tools{kesview::readFile, kesview::makeDrawing, kesview::makePickIndex,
                               kesview::endAfter};
    const kesview::ExitCode code = kesview::runKesview({argv + 1, argv + argc}, tools, streams);
    out.flush();
    return static_cast<int>(answerOf(code, outBuffer.Failure(), err));
}
