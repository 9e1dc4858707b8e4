#pragma once

/// @file
/// What the tests ask of the operating system; one source for each family of systems.

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace KesVizCore {

/// Catches what reaches the debugger, as long as it lives. One at a time.
class DebuggerCapture {
public:
    DebuggerCapture();
    ~DebuggerCapture();
    DebuggerCapture(const DebuggerCapture&) = delete;
    DebuggerCapture& operator=(const DebuggerCapture&) = delete;

    /// The texts that have arrived since the last question, one for each call that sent any; the
    /// system keeps about 200 until they are asked for.
    std::vector<std::string> TakeCalls();
    /// The same in one text.
    std::string TakeText();

private:
    struct System;
    std::unique_ptr<System> _system;
};

/// A new empty folder for temporary files, removed with all that is in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return _path; }
    /// Writes a file into the folder, byte for byte, and answers its path.
    std::filesystem::path Write(const std::filesystem::path& name, const std::string& bytes) const;

private:
    std::filesystem::path _path;
};

/// The current folder is another one as long as it lives.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& path);
    ~CurrentFolder();
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::filesystem::path _before;
};

/// Sets a C locale that writes decimals with a comma. On a machine that cannot make one it differs
/// from "C" in its characters only, which is a weaker opponent.
void setForeignLocale();

}  // namespace KesVizCore
