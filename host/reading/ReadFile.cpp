/// @file
#include "reading/ReadFile.h"

#include "reading/FileFormat.h"
#include "reading/Frames.h"
#include "reading/InputFile.h"
#include "reading/InterruptWatch.h"
#include "reading/ReaderArguments.h"
#include "reading/ReaderProcess.h"
#include "reading/ReaderProgram.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <limits>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace kesview {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::string inQuotes(const std::string& path) {
    return "'" + path + "'";
}

// --- before a reader is started -----------------------------------------------------------------

bool hasKnownExtension(const std::string& path) {
    static const std::array<const char*, 8> known = {".stp",  ".step", ".p21", ".igs",
                                                     ".iges", ".brep", ".brp", ".stl"};
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char character) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    });
    return std::find(known.begin(), known.end(), extension) != known.end();
}

FileFormat formatToRead(const std::string& path) {
    if (InputFile(path).Size() == 0) {
        throw ReadError(hasKnownExtension(path) ? ReadFailure::Damaged : ReadFailure::UnknownFormat,
                        inQuotes(path) + " is empty.");
    }
    const FileFormat format = detectFormat(path);
    if (format == FileFormat::Unknown) {
        throw ReadError(ReadFailure::UnknownFormat,
                        inQuotes(path) + " is neither STEP, IGES, BREP nor STL by its content.");
    }
    return format;
}

// --- what the reader prints ---------------------------------------------------------------------

/// Keeps the end of what a reader prints, for the message when it crashes.
class Noise {
public:
    enum class Came { Something, Nothing, TheEnd };

    Came ReadFrom(int descriptor) {
        std::array<char, 16 * 1024> piece = {};
        const ssize_t count = ::read(descriptor, piece.data(), piece.size());
        if (count <= 0) {
            const bool later = count < 0 && (errno == EAGAIN || errno == EINTR);
            return later ? Came::Nothing : Came::TheEnd;
        }
        _text.append(piece.data(), static_cast<std::size_t>(count));
        if (_text.size() > 2 * kept) {
            _text.erase(0, _text.size() - kept);
        }
        return Came::Something;
    }

    bool Has(const char* words) const { return _text.find(words) != std::string::npos; }

    /// The last line that is not empty; " It last said: …" or nothing.
    std::string LastWords() const {
        constexpr std::size_t longest = 300;
        const std::size_t end = _text.find_last_not_of(" \t\r\n");
        if (end == std::string::npos) {
            return "";
        }
        const std::size_t lineEnd = _text.find_last_of('\n', end);
        const std::size_t start = lineEnd == std::string::npos ? 0 : lineEnd + 1;
        return " It last said: " + _text.substr(start, std::min(end + 1 - start, longest));
    }

private:
    static constexpr std::size_t kept = 8 * 1024;
    std::string _text;
};

// --- a reader at work ---------------------------------------------------------------------------

/// One reading from the start of its process to the document.
class Reading {
public:
    Reading(const std::string& path, FileFormat format, const ReadOptions& options,
            const ReadProgress& progress)
        : _path(path),
          _options(options),
          _progress(progress),
          _deadline(Clock::now() + options.timeLimit),
          _process(findReaderProgram(), toCommandLine({path, format, options}),
                   options.memoryLimit),
          _parser(options.memoryLimit > 0 ? options.memoryLimit
                                          : std::numeric_limits<std::uint64_t>::max()) {}

    Document Run() {
        while (!_parser.IsDone() && _answering) {
            waitForMore();
        }
        if (_parser.IsDone()) {
            Document document = checked([this] { return _parser.Result(); });
            throwIfStopped();  // a signal that came meanwhile would be lost with the watch
            return document;
        }
        throw explain(awaitEnd());
    }

private:
    /// Runs @p step and tells damage of the answer as damage of the file.
    template <typename Step>
    auto checked(Step step) -> decltype(step()) {
        try {
            return step();
        } catch (const ReadError&) {
            throw;
        } catch (const std::runtime_error& error) {
            throw ReadError(ReadFailure::Damaged, "The reader failed on " + inQuotes(_path) + ": " +
                                                      error.what() + _noise.LastWords());
        } catch (const std::bad_alloc&) {
            throw ReadError(ReadFailure::LimitReached,
                            inQuotes(_path) + " holds more than this machine's memory can take.");
        }
    }

    /// Waits until something happens, and takes what came.
    void waitForMore() {
        std::array<pollfd, 3> waiting = {{{_interrupts.Descriptor(), POLLIN, 0},
                                          {_process.Answer(), POLLIN, 0},
                                          {_printing ? _process.Noise() : -1, POLLIN, 0}}};
        ::poll(waiting.data(), waiting.size(), patience());
        throwIfStopped();
        if (waiting[2].revents != 0) {
            _printing = _noise.ReadFrom(_process.Noise()) != Noise::Came::TheEnd;
        }
        if (waiting[1].revents != 0) {
            readAnswer();
        }
    }

    /// The milliseconds that are left, rounded up.
    int patience() const {
        const auto left = std::chrono::ceil<milliseconds>(_deadline - Clock::now()).count();
        return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
    }

    void throwIfStopped() const {
        pollfd interrupt = {_interrupts.Descriptor(), POLLIN, 0};
        if (::poll(&interrupt, 1, 0) > 0) {
            throw ReadError(ReadFailure::Interrupted,
                            "Reading " + inQuotes(_path) + " was interrupted.");
        }
        if (Clock::now() >= _deadline) {
            const double seconds = std::chrono::duration<double>(_options.timeLimit).count();
            std::string text = std::to_string(seconds);
            text.erase(text.find_last_not_of('0') + 1);
            text.erase(text.find_last_not_of('.') + 1);
            throw ReadError(ReadFailure::LimitReached, "Reading " + inQuotes(_path) +
                                                           " took longer than the limit of " +
                                                           text + " s; raise the limit.");
        }
    }

    void readAnswer() {
        const auto [place, size] = _parser.Wanted();
        const ssize_t count = ::read(_process.Answer(), place, size);
        if (count > 0) {
            checked([this, taken = static_cast<std::size_t>(count)] { _parser.Took(taken); });
            const auto told = _parser.TakeProgress();
            if (told && _progress) {
                _progress(told->stage, told->fraction);
            }
        }
        _answering = count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
    }

    /// Waits for the end of a reader that has stopped answering, but not long.
    ProcessEnd awaitEnd() {
        constexpr milliseconds step{2};
        const Clock::time_point patienceEnd = Clock::now() + milliseconds(2000);
        ProcessEnd end;
        while (!_process.HasEnded(end) && Clock::now() < patienceEnd) {
            throwIfStopped();
            std::this_thread::sleep_for(step);
        }
        while (_noise.ReadFrom(_process.Noise()) == Noise::Came::Something) {
        }
        return end;
    }

    /// Why there is no document.
    ReadError explain(const ProcessEnd& end) const {
        constexpr int cannotStart = 127;
        if (ranOutOfMemory(end)) {
            return ReadError(ReadFailure::LimitReached,
                             "Reading " + inQuotes(_path) +
                                 " needs more memory than the limit allows; raise the limit.");
        }
        if (end.signal != 0) {
            return ReadError(ReadFailure::Damaged, "The reader crashed (signal " +
                                                       std::to_string(end.signal) + ") on " +
                                                       inQuotes(_path) + "." + _noise.LastWords());
        }
        if (end.status == cannotStart) {
            return ReadError(ReadFailure::Unreadable,
                             "The program kesview-reader cannot be started; install it again." +
                                 _noise.LastWords());
        }
        return ReadError(ReadFailure::Damaged, "The reader stopped on " + inQuotes(_path) +
                                                   " with status " + std::to_string(end.status) +
                                                   " before its answer was complete." +
                                                   _noise.LastWords());
    }

    /// A reader without memory ends in many ways: by its own word, killed by the system, or by a
    /// crash on what it did not get while it held nearly all that it may.
    bool ranOutOfMemory(const ProcessEnd& end) const {
        if (end.signal == 0 && end.status == 0) {
            return false;
        }
        return end.signal == SIGKILL || _noise.Has("bad_alloc") ||
               _noise.Has("failed to map segment") ||
               (_options.memoryLimit > 0 &&
                end.peakMemory >= _options.memoryLimit - _options.memoryLimit / 4);
    }

    const std::string& _path;
    const ReadOptions& _options;
    const ReadProgress& _progress;
    Clock::time_point _deadline;
    InterruptWatch _interrupts;
    ReaderProcess _process;
    FrameParser _parser;
    Noise _noise;
    bool _answering = true;
    bool _printing = true;
};

}  // namespace

Document readFile(const std::string& path, const ReadOptions& options,
                  const ReadProgress& progress) {
    const FileFormat format = formatToRead(path);
    return Reading(path, format, options, progress).Run();
}

}  // namespace kesview
