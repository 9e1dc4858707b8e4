#include "report/TestSystem.h"

#include <atomic>
#include <clocale>
#include <fstream>
#include <stdexcept>
#include <windows.h>

namespace KesVizCore {

namespace {

/// What has arrived so far; the system calls the handler without an argument of ours.
std::vector<std::string> arrived;

/// A text for the debugger is raised as an exception whose first two arguments are its length,
/// with the terminating zero, and its characters.
LONG CALLBACK keepDebuggerText(EXCEPTION_POINTERS* raised) {
    constexpr DWORD debuggerText = 0x40010006;
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    if (record.ExceptionCode != debuggerText || record.NumberParameters < 2) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    const std::string text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    if (!text.empty()) {
        arrived.push_back(text);
    }
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

struct DebuggerCapture::System {
    void* handler = nullptr;
};

DebuggerCapture::DebuggerCapture() : _system(std::make_unique<System>()) {
    arrived.clear();
    _system->handler = AddVectoredExceptionHandler(1, &keepDebuggerText);
}

DebuggerCapture::~DebuggerCapture() {
    RemoveVectoredExceptionHandler(_system->handler);
}

std::vector<std::string> DebuggerCapture::TakeCalls() {
    std::vector<std::string> calls;
    calls.swap(arrived);
    return calls;
}

std::string DebuggerCapture::TakeText() {
    std::string text;
    for (const std::string& call : TakeCalls()) {
        text += call;
    }
    return text;
}

TemporaryFolder::TemporaryFolder() {
    static std::atomic<int> counter{0};
    const std::string name = "kesvizcore-" + std::to_string(GetCurrentProcessId()) + "-" +
                             std::to_string(GetTickCount64()) + "-" + std::to_string(++counter);
    _path = std::filesystem::temp_directory_path() / name;
    if (!std::filesystem::create_directory(_path)) {
        throw std::runtime_error("no temporary folder");
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

std::filesystem::path TemporaryFolder::Write(const std::filesystem::path& name,
                                             const std::string& bytes) const {
    std::ofstream(_path / name, std::ios::binary) << bytes;
    return _path / name;
}

CurrentFolder::CurrentFolder(const std::filesystem::path& path)
    : _before(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
}

CurrentFolder::~CurrentFolder() {
    std::filesystem::current_path(_before);
}

void setForeignLocale() {
    for (const char* installed : {"German_Germany.1252", "German", "de-DE"}) {
        if (std::setlocale(LC_ALL, installed) != nullptr) {
            return;
        }
    }
    throw std::runtime_error("no locale but \"C\"");
}

}  // namespace KesVizCore
