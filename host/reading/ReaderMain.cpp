/// @file
/// kesview-reader: reads one CAD file and answers with frames. It is started by kesview, which
/// keeps its limits and outlives it.

#include "reading/Frames.h"
#include "reading/ReaderArguments.h"
#include "reading/occ/ReadCadFile.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <fstream>
#include <new>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

/// Passes progress on, but not so often that telling it costs more than what it tells of.
class ProgressSender {
public:
    explicit ProgressSender(kesview::FrameWriter& writer) : _writer(writer) {}

    void operator()(const std::string& stage, double fraction) {
        constexpr std::chrono::milliseconds pause{50};
        const Clock::time_point now = Clock::now();
        if (stage == _stage && now - _last < pause) {
            return;
        }
        _stage = stage;
        _last = now;
        _writer.WriteProgress(stage, fraction);
    }

private:
    kesview::FrameWriter& _writer;
    std::string _stage;
    Clock::time_point _last;
};

/// The most address space that this process ever had, in bytes.
std::uint64_t peakAddressSpace() {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        std::uint64_t kilobytes = 0;
        if (word == "VmPeak:" && status >> kilobytes) {
            return kilobytes * 1024;
        }
    }
    return 0;
}

/// Readers take an allocation that fails for a damaged file, or leave out what they had no room
/// for; only how near the limit is tells.
bool isNearMemoryLimit() {
    rlimit limit = {};
    ::getrlimit(RLIMIT_AS, &limit);
    return limit.rlim_cur != RLIM_INFINITY &&
           peakAddressSpace() >= limit.rlim_cur - limit.rlim_cur / 8;
}

void sendFailure(kesview::ReadFailure failure, std::string_view message,
                 kesview::FrameWriter& writer) {
    if (isNearMemoryLimit()) {
        failure = kesview::ReadFailure::LimitReached;
        message = "The file needs more memory than the limit allows; raise the limit.";
    }
    writer.WriteFailure(failure, message);
}

void answer(const kesview::ReaderArguments& arguments, kesview::FrameWriter& writer) {
    using kesview::ReadFailure;
    kesview::Document document;
    try {
        document = kesview::readCadFile(arguments.path, arguments.format, arguments.options,
                                        ProgressSender(writer));
    } catch (const kesview::ReadError& error) {
        return sendFailure(error.Failure(), error.what(), writer);
    } catch (const std::bad_alloc&) {
        return writer.WriteFailure(
            ReadFailure::LimitReached,
            "The file needs more memory than the limit allows; raise the limit.");
    } catch (const std::exception& error) {
        return sendFailure(ReadFailure::Damaged,
                           std::string("The file cannot be read: ") + error.what(), writer);
    }
    if (isNearMemoryLimit()) {
        document.findings.push_back({kesview::Finding::Severity::Warning, "read.memory",
                                     "Reading came near the limit of memory, so that something "
                                     "may be missing; raise the limit.",
                                     "", 1});
    }
    writer.WriteDocument(document);
}

}  // namespace

int main(int count, char** words) {
    constexpr int usageError = 2;
    if (::fcntl(kesview::frameDescriptor, F_GETFD) < 0) {
        std::fputs("kesview-reader is started by kesview, not by hand.\n", stderr);
        return usageError;
    }
    try {
        const std::vector<std::string> given(words + 1, words + count);
        kesview::FrameWriter writer(kesview::frameDescriptor);
        answer(kesview::fromCommandLine(given), writer);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return usageError;
    }
    return 0;
}
