/// @file
#include "reading/ReaderProcess.h"

#include "reading/Frames.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kesview {

namespace {

constexpr int cannotStart = 127;

// A memory checker reserves more address space than any limit would leave it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool limitsMemory = false;
#else
constexpr bool limitsMemory = true;
#endif

/// Both ends of a pipe, closed at the end of the scope unless given away.
class Pipe {
public:
    Pipe() {
        if (::pipe2(_ends.data(), O_CLOEXEC) != 0) {
            throw std::system_error(errno, std::generic_category(), "No pipe can be made");
        }
        // Numbers up to the one that the reader writes to are to be had for it.
        for (int& end : _ends) {
            if (end <= frameDescriptor) {
                const int moved = ::fcntl(end, F_DUPFD_CLOEXEC, frameDescriptor + 1);
                ::close(end);
                end = moved;
            }
        }
        ::fcntl(_ends[0], F_SETFL, O_NONBLOCK);
    }
    ~Pipe() {
        for (const int end : _ends) {
            if (end >= 0) {
                ::close(end);
            }
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int ReadEnd() const { return _ends[0]; }
    int WriteEnd() const { return _ends[1]; }
    int TakeReadEnd() { return std::exchange(_ends[0], -1); }

private:
    std::array<int, 2> _ends = {-1, -1};
};

/// What the new process needs, made before it exists: from then to the start of its program it may
/// neither allocate nor lock.
struct Start {
    const char* program;
    std::vector<char*> arguments;
    rlim_t memoryLimit;
    pid_t parent;
    int answer;
    int noise;
};

void limit(int resource, rlim_t value) {
    rlimit limits = {};
    ::getrlimit(static_cast<__rlimit_resource>(resource), &limits);
    limits.rlim_max = limits.rlim_max == RLIM_INFINITY ? value : std::min(limits.rlim_max, value);
    limits.rlim_cur = limits.rlim_max;
    ::setrlimit(static_cast<__rlimit_resource>(resource), &limits);
}

void restoreSignals() {
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    for (const int number : {SIGINT, SIGTERM, SIGPIPE}) {
        ::signal(number, SIG_DFL);
    }
}

[[noreturn]] void become(const Start& start) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != start.parent) {
        ::_exit(cannotStart);
    }
    restoreSignals();
    limit(RLIMIT_CORE, 0);
    if (start.memoryLimit != RLIM_INFINITY) {
        limit(RLIMIT_AS, start.memoryLimit);
    }
    const int nothing = ::open("/dev/null", O_RDONLY);
    if (::dup2(nothing, STDIN_FILENO) < 0 || ::dup2(start.noise, STDOUT_FILENO) < 0 ||
        ::dup2(start.noise, STDERR_FILENO) < 0 || ::dup2(start.answer, frameDescriptor) < 0) {
        ::_exit(cannotStart);
    }
    ::execv(start.program, start.arguments.data());
    ::_exit(cannotStart);
}

}  // namespace

ReaderProcess::ReaderProcess(const std::string& program, const std::vector<std::string>& arguments,
                             std::uint64_t memoryLimit) {
    constexpr int answerCapacity = 1 << 20;
    Pipe answer;
    Pipe noise;
    ::fcntl(answer.WriteEnd(), F_SETPIPE_SZ, answerCapacity);  // where not granted, only slower

    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    Start start{program.c_str(), {}, RLIM_INFINITY, ::getpid(), answer.WriteEnd(),
                noise.WriteEnd()};
    for (std::string& word : words) {
        start.arguments.push_back(word.data());
    }
    start.arguments.push_back(nullptr);
    if (limitsMemory && memoryLimit > 0) {
        start.memoryLimit = memoryLimit;
    }

    _id = ::fork();
    if (_id == 0) {
        become(start);
    }
    if (_id < 0) {
        throw std::system_error(errno, std::generic_category(), "No process can be started");
    }
    ::setpgid(_id, _id);  // here, too, as either may come first
    _answer = answer.TakeReadEnd();
    _noise = noise.TakeReadEnd();
}

ReaderProcess::~ReaderProcess() {
    // The group as well once its leader is gone: it may have started others.
    ::kill(-_id, SIGKILL);
    if (!_ended) {
        ::kill(_id, SIGKILL);
        reap(0);
    }
    ::close(_answer);
    ::close(_noise);
}

bool ReaderProcess::HasEnded(ProcessEnd& end) {
    if (!_ended) {
        reap(WNOHANG);
    }
    end = _end;
    return _ended;
}

void ReaderProcess::reap(int options) {
    int status = 0;
    rusage usage = {};
    pid_t ended = 0;
    do {
        ended = ::wait4(_id, &status, options, &usage);
    } while (ended < 0 && errno == EINTR);
    if (ended == 0) {
        return;
    }
    _ended = true;
    if (ended < 0) {
        return;  // somebody else awaited it, as a process does that ignores SIGCHLD
    }
    _end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    _end.status = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    _end.peakMemory = static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

}  // namespace kesview
