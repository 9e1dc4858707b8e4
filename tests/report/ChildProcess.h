#pragma once

/// @file
/// Starts a program of our own from a test; it finds the library beside the test's program.

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <windows.h>

namespace KesVizCore {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

/// The path of the running test program.
inline std::filesystem::path testProgram() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// Starts @p program in the test program's folder, its output into the file @p output where that
/// is not null; answers the process, with the thread's handle closed.
inline OwnedHandle start(const std::filesystem::path& program, DWORD flags, HANDLE output) {
    std::wstring command = L"\"" + program.wstring() + L"\"";
    STARTUPINFOW options{};
    options.cb = sizeof options;
    if (output != nullptr) {
        options.dwFlags = STARTF_USESTDHANDLES;
        options.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        options.hStdOutput = output;
        options.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    }
    PROCESS_INFORMATION process{};
    const std::wstring folder = testProgram().parent_path().wstring();
    if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, output != nullptr, flags,
                        nullptr, folder.c_str(), &options, &process)) {
        throw std::runtime_error("cannot start " + program.string());
    }
    CloseHandle(process.hThread);
    return OwnedHandle(process.hProcess);
}

}  // namespace KesVizCore
