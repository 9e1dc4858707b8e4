/// @file
#include "reading/InterruptWatch.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <poll.h>

namespace kesview {
namespace {

bool hasSignal(const InterruptWatch& watch) {
    pollfd waiting = {watch.Descriptor(), POLLIN, 0};
    return ::poll(&waiting, 1, 0) == 1;
}

volatile std::sig_atomic_t caught = 0;
void remember(int signal) {
    caught = signal;
}

TEST(InterruptWatchTest, NoticesBothSignalsInsteadOfEnding) {
    for (const int signal : {SIGINT, SIGTERM}) {
        InterruptWatch watch;
        EXPECT_FALSE(hasSignal(watch));
        ::raise(signal);
        EXPECT_TRUE(hasSignal(watch));
    }
}

TEST(InterruptWatchTest, ForgetsASignalOfAnEarlierWatch) {
    {
        InterruptWatch watch;
        ::raise(SIGINT);
    }
    EXPECT_FALSE(hasSignal(InterruptWatch()));
}

TEST(InterruptWatchTest, GivesTheSignalsBackToWhoHadThem) {
    struct sigaction previous = {};
    struct sigaction own = {};
    own.sa_handler = remember;
    ::sigaction(SIGINT, &own, &previous);
    {
        InterruptWatch watch;
        ::raise(SIGINT);
        EXPECT_EQ(caught, 0);
    }
    ::raise(SIGINT);
    EXPECT_EQ(caught, SIGINT);
    ::sigaction(SIGINT, &previous, nullptr);
}

TEST(InterruptWatchTest, AnIgnoredSignalStaysIgnored) {
    struct sigaction previous = {};
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGINT, &ignore, &previous);
    {
        InterruptWatch watch;
        ::raise(SIGINT);
        EXPECT_FALSE(hasSignal(watch));
    }
    ::sigaction(SIGINT, &previous, nullptr);
}

TEST(InterruptWatchTest, OverlappingWatchesSeeOneSignalBoth) {
    InterruptWatch first;
    auto second = std::make_unique<InterruptWatch>();
    ::raise(SIGTERM);
    EXPECT_TRUE(hasSignal(first));
    EXPECT_TRUE(hasSignal(*second));
    second.reset();
    ::raise(SIGTERM);  // the first still holds it
    EXPECT_TRUE(hasSignal(first));
}

}  // namespace
}  // namespace kesview
