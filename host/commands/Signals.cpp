#include "commands/Signals.h"

#include "commands/ExitCode.h"

#include <atomic>
#include <pthread.h>
#include <sched.h>
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

[[noreturn]] void endBy(int signal) {
    if (signal == SIGALRM) {
        endWith("\nkesview: error: the time limit is reached; --time-limit allows more\n",
                ExitCode::LimitReached);
    }
    endWith("\nkesview: interrupted\n", ExitCode::Interrupted);
}

/// A mask holds signals from one thread alone, and libraries that draw have more of them, which
/// then are given the signal: hence these.
std::atomic<int> holders{0};
std::atomic<int> cameMeanwhile{0};  ///< the last signal that has to wait, or 0
std::atomic<int> undecided{0};      ///< handlers that may be about to end the process
static_assert(std::atomic<int>::is_always_lock_free);

void onSignal(int signal) {
    ++undecided;
    if (holders == 0) {
        endBy(signal);
    }
    cameMeanwhile = signal;
    --undecided;
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

void endOnSignals() {
    handle(SIGINT, onSignal);
    handle(SIGTERM, onSignal);
    handle(SIGPIPE, SIG_IGN);
    handle(SIGXFSZ, SIG_IGN);  // writing answers it
}

void endAfter(std::chrono::milliseconds limit) {
    handle(SIGALRM, onSignal);
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
    ++holders;
    while (undecided != 0) {
        ::sched_yield();
    }
}

SignalsHeld::~SignalsHeld() {
    --holders;
    ::pthread_sigmask(SIG_SETMASK, &_before, nullptr);
    if (holders == 0 && cameMeanwhile != 0) {
        endBy(cameMeanwhile);
    }
}

}  // namespace kesview
