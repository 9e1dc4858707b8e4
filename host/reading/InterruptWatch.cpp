/// @file
#include "reading/InterruptWatch.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <mutex>
#include <sched.h>
#include <system_error>
#include <unistd.h>

namespace kesview {

namespace {

constexpr std::array<int, 2> signals = {SIGINT, SIGTERM};

/// A handler is told nothing but the signal's number, hence this global; -1 while nobody watches.
std::atomic<int> wakeUp{-1};
/// How many handlers run now, on whatever threads.
std::atomic<int> handlers{0};
static_assert(std::atomic<int>::is_always_lock_free);

void onSignal(int) {
    const int reason = errno;
    ++handlers;
    const int descriptor = wakeUp;
    if (descriptor >= 0) {
        // A full pipe has said it already.
        [[maybe_unused]] const ssize_t ignored = ::write(descriptor, "", 1);
    }
    --handlers;
    errno = reason;
}

/// What all watches share.
struct Shared {
    std::mutex mutex;
    int watches = 0;
    std::array<int, 2> pipe = {-1, -1};
    std::array<struct sigaction, signals.size()> previous = {};
};

Shared& shared() {
    static Shared theOne;
    return theOne;
}

void takeOver(Shared& state) {
    if (::pipe2(state.pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "Signals cannot be watched");
    }
    wakeUp = state.pipe[1];
    struct sigaction ours = {};
    ours.sa_handler = onSignal;
    for (std::size_t i = 0; i < signals.size(); ++i) {
        ::sigaction(signals[i], nullptr, &state.previous[i]);
        if (state.previous[i].sa_handler != SIG_IGN) {
            ::sigaction(signals[i], &ours, nullptr);
        }
    }
}

void giveBack(Shared& state) {
    for (std::size_t i = 0; i < signals.size(); ++i) {
        ::sigaction(signals[i], &state.previous[i], nullptr);
    }
    wakeUp = -1;
    while (handlers != 0) {
        ::sched_yield();  // one of another thread may be about to write
    }
    for (const int end : state.pipe) {
        ::close(end);
    }
}

}  // namespace

InterruptWatch::InterruptWatch() {
    Shared& state = shared();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (state.watches == 0) {
        takeOver(state);
    }
    ++state.watches;
    _descriptor = state.pipe[0];
}

InterruptWatch::~InterruptWatch() {
    Shared& state = shared();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (--state.watches == 0) {
        giveBack(state);
    }
}

}  // namespace kesview
