#include "report/TestSystem.h"

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace KesVizCore {

/// The standard error stream leads into a pipe that keeps every write apart from the next.
struct DebuggerCapture::System {
    int standardError = -1;
    int ends[2] = {-1, -1};
};

DebuggerCapture::DebuggerCapture() : _system(std::make_unique<System>()) {
    if (pipe2(_system->ends, O_DIRECT | O_NONBLOCK | O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    fcntl(_system->ends[1], F_SETPIPE_SZ, 1 << 20);
    _system->standardError = dup(STDERR_FILENO);
    dup2(_system->ends[1], STDERR_FILENO);
}

DebuggerCapture::~DebuggerCapture() {
    dup2(_system->standardError, STDERR_FILENO);
    close(_system->standardError);
    close(_system->ends[0]);
    close(_system->ends[1]);
}

std::vector<std::string> DebuggerCapture::TakeCalls() {
    std::vector<std::string> calls;
    char bytes[4096];
    ssize_t count = 0;
    while ((count = read(_system->ends[0], bytes, sizeof bytes)) > 0) {
        calls.emplace_back(bytes, static_cast<std::size_t>(count));
    }
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
    std::string pattern = (std::filesystem::temp_directory_path() / "kesvizcore-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    _path = pattern;
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
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) {
        throw std::runtime_error("no locale but \"C\"");
    }
    // Few machines have one with a comma installed, but all can make one.
    const TemporaryFolder folder;
    const std::string source = folder.Write("source",
                                            "LC_NUMERIC\n"
                                            "decimal_point \",\"\n"
                                            "thousands_sep \".\"\n"
                                            "grouping 2;2\n"
                                            "END LC_NUMERIC\n");
    const std::string command = "localedef -c -i '" + source + "' -f ANSI_X3.4-1968 '" +
                                (folder.Path() / "foreign").string() + "' >/dev/null 2>&1";
    [[maybe_unused]] const int status = std::system(command.c_str());  // warns of what is left out
    setenv("LOCPATH", folder.Path().c_str(), 1);
    std::setlocale(LC_NUMERIC, "foreign");
    unsetenv("LOCPATH");
}

}  // namespace KesVizCore
