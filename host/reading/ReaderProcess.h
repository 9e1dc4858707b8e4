#pragma once

/// @file
/// The process of a reader: started under limits, ended for certain.

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

/// How a process ended.
struct ProcessEnd {
    int signal = 0;                ///< that killed it, or 0
    int status = 0;                ///< its exit status when no signal did
    std::uint64_t peakMemory = 0;  ///< bytes that it held at most
};

/// Runs a program that writes its answer to frameDescriptor. What it prints, on either stream,
/// comes through Noise(); it reads nothing. It dies when the thread that started it does, leaves no
/// core file, and gets no signal from the terminal.
class ReaderProcess {
public:
    /// @p memoryLimit is in bytes of address space, 0 for none. Throws std::system_error where no
    /// process can be started; a program that is none ends with status 127.
    ReaderProcess(const std::string& program, const std::vector<std::string>& arguments,
                  std::uint64_t memoryLimit);
    /// Kills it, with all that it started, unless it was awaited.
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess&) = delete;
    ReaderProcess& operator=(const ReaderProcess&) = delete;

    /// Read ends of pipes, which never block; owned by this object.
    int Answer() const { return _answer; }
    int Noise() const { return _noise; }

    /// True once it has ended; @p end then says how.
    bool HasEnded(ProcessEnd& end);

private:
    void reap(int options);

    int _id = -1;
    int _answer = -1;
    int _noise = -1;
    bool _ended = false;
    ProcessEnd _end;
};

}  // namespace kesview
