#include "ProgramKit.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace kesview::support {

namespace {

using Clock = std::chrono::steady_clock;

/// A file without a name, that a program writes and the test reads.
class Capture {
public:
    Capture() : _file(std::tmpfile()) {
        if (_file == nullptr) {
            throw std::runtime_error("no temporary file");
        }
    }
    ~Capture() { std::fclose(_file); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    int Descriptor() const { return fileno(_file); }
    std::string Text() const {
        std::string text;
        std::rewind(_file);
        char piece[4096];
        for (std::size_t count = 0; (count = std::fread(piece, 1, sizeof piece, _file)) > 0;) {
            text.append(piece, count);
        }
        return text;
    }

private:
    std::FILE* _file;
};

pid_t start(const ProgramRun& run, const Capture& out, const Capture& err) {
    std::vector<std::string> words = {KESVIEW_PROGRAM};
    words.insert(words.end(), run.arguments.begin(), run.arguments.end());
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (run.output.empty()) {
        posix_spawn_file_actions_adddup2(&actions, out.Descriptor(), STDOUT_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, run.output.c_str(), O_WRONLY, 0);
    }
    posix_spawn_file_actions_adddup2(&actions, err.Descriptor(), STDERR_FILENO);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, KESVIEW_PROGRAM, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        throw std::runtime_error("kesview does not start");
    }
    return process;
}

/// The status, or none while it still runs.
bool hasEnded(pid_t process, ProgramAnswer& answer) {
    int status = 0;
    if (::waitpid(process, &status, WNOHANG) != process) {
        return false;
    }
    answer.code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return true;
}

}  // namespace

ProgramAnswer runProgram(const ProgramRun& run) {
    const Capture out;
    const Capture err;
    ProgramAnswer answer;
    const Clock::time_point begin = Clock::now();
    const pid_t process = start(run, out, err);
    bool signalled = run.signal == 0;
    while (!hasEnded(process, answer)) {
        const Clock::duration passed = Clock::now() - begin;
        if (!signalled && passed >= run.signalAfter) {
            ::kill(process, run.signal);
            signalled = true;
        }
        if (passed > run.patience && !answer.hung) {
            ::kill(process, SIGKILL);
            answer.hung = true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    answer.out = out.Text();
    answer.err = err.Text();
    return answer;
}

ProgramAnswer runProgram(const std::vector<std::string>& arguments) {
    ProgramRun run;
    run.arguments = arguments;
    return runProgram(run);
}

}  // namespace kesview::support
