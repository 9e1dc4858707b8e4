#include "commands/Signals.h"

#include "commands/ExitCode.h"

#include <pthread.h>
#include <string_view>
#include <sys/time.h>
#include <unistd.h>

namespace kesview {

namespace {

constexpr std::chrono::milliseconds kGrace(1000);

/// Only what a signal handler may call.
[[noreturn]] void endWith(std::string_view line, ExitCode code) {
    [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, line.data(), line.size());
    ::_exit(static_cast<int>(code));
}

void onInterrupt(int) {
    endWith("\nkesview: interrupted\n", ExitCode::Interrupted);
}

void onAlarm(int) {
    endWith("\nkesview: error: the time limit is reached; --time-limit allows more\n",
            ExitCode::LimitReached);
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

void endOnSignals() {
    handle(SIGINT, onInterrupt);
    handle(SIGTERM, onInterrupt);
    handle(SIGPIPE, SIG_IGN);
    handle(SIGXFSZ, SIG_IGN);  // writing answers it
}

void endAfter(std::chrono::milliseconds limit) {
    handle(SIGALRM, onAlarm);
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(limit + kGrace);
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(limit + kGrace - whole);
    itimerval timer = {};
    timer.it_value.tv_sec = static_cast<time_t>(whole.count());
    timer.it_value.tv_usec = static_cast<suseconds_t>(rest.count());
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

SignalsHeld::SignalsHeld() {
    sigset_t held;
    ::sigemptyset(&held);
    for (const int signal : {SIGINT, SIGTERM, SIGALRM}) {
        ::sigaddset(&held, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &held, &_before);
}

SignalsHeld::~SignalsHeld() {
    ::pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}

}  // namespace kesview
