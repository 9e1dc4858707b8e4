#include <KesVizCore/report/AllowThrow.h>
#include <KesVizCore/report/Stopwatch.h>

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

namespace KesVizCore {
namespace {

/// Times are compared with readings of a clock of our own that enclose or are enclosed by those
/// of the stopwatch, so that a busy machine cannot upset a bound.
class StopwatchTest : public testing::Test {
protected:
    void TearDown() override { SetAllowThrow(false); }

    /// Seconds on our own clock.
    static double now() {
        using Seconds = std::chrono::duration<double>;
        return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
    static void sleep() { std::this_thread::sleep_for(std::chrono::milliseconds(20)); }
    /// The message of what @p call throws.
    template <typename Call>
    static std::string messageOf(Call call) {
        try {
            call();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "nothing thrown";
    }

    static constexpr double _tolerance = 1e-6;  // of our clock's readings as doubles
};

TEST_F(StopwatchTest, StartsWithoutTimeAndNotRunning) {
    Stopwatch stopwatch;
    EXPECT_EQ(stopwatch.GetElapsedTime(), 0.0);
    EXPECT_EQ(stopwatch.GetElapsedTime(), 0.0);
}

TEST_F(StopwatchTest, MeasuresFromStartToStop) {
    Stopwatch stopwatch;
    const double beforeStart = now();
    stopwatch.Start();
    const double afterStart = now();
    sleep();
    const double beforeStop = now();
    stopwatch.Stop();
    const double afterStop = now();
    EXPECT_GE(stopwatch.GetElapsedTime(), beforeStop - afterStart - _tolerance);
    EXPECT_LE(stopwatch.GetElapsedTime(), afterStop - beforeStart + _tolerance);
}

TEST_F(StopwatchTest, AddsUpIntervalsWithoutTheTimeBetween) {
    Stopwatch stopwatch;
    double inside = 0.0;
    double outside = 0.0;
    for (int interval = 0; interval < 2; ++interval) {
        const double beforeStart = now();
        stopwatch.Start();
        const double afterStart = now();
        sleep();
        const double beforeStop = now();
        stopwatch.Stop();
        inside += beforeStop - afterStart;
        outside += now() - beforeStart;
        sleep();
    }
    EXPECT_GE(stopwatch.GetElapsedTime(), inside - _tolerance);
    EXPECT_LE(stopwatch.GetElapsedTime(), outside + _tolerance);
}

TEST_F(StopwatchTest, StartWhileRunningBeginsTheIntervalAnew) {
    Stopwatch stopwatch;
    stopwatch.Start();
    sleep();
    const double beforeStart = now();
    stopwatch.Start();
    stopwatch.Stop();
    EXPECT_LE(stopwatch.GetElapsedTime(), now() - beforeStart + _tolerance);
}

TEST_F(StopwatchTest, StartWhileRunningThrowsWhenThrowingIsAllowed) {
    SetAllowThrow(true);
    Stopwatch stopwatch;
    stopwatch.Start();
    EXPECT_EQ(messageOf([&] { stopwatch.Start(); }), "Stopwatch in already started");
}

TEST_F(StopwatchTest, StartThatThrowsLeavesTheIntervalRunning) {
    SetAllowThrow(true);
    Stopwatch stopwatch;
    stopwatch.Start();
    const double afterStart = now();
    sleep();
    EXPECT_THROW(stopwatch.Start(), std::runtime_error);
    const double beforeStop = now();
    stopwatch.Stop();
    EXPECT_GE(stopwatch.GetElapsedTime(), beforeStop - afterStart - _tolerance);
}

TEST_F(StopwatchTest, StopWithoutStartCountsFromTheZeroOfTheCounter) {
    Stopwatch stopwatch;  // its start is 0, so the sum becomes the counter itself
    const double before = now();
    EXPECT_NO_THROW(stopwatch.Stop());
    EXPECT_GE(stopwatch.GetElapsedTime(), before - _tolerance);
    EXPECT_LE(stopwatch.GetElapsedTime(), now() + _tolerance);
}

TEST_F(StopwatchTest, StopWithoutStartThrowsWhenThrowingIsAllowed) {
    SetAllowThrow(true);
    Stopwatch stopwatch;
    EXPECT_EQ(messageOf([&] { stopwatch.Stop(); }), "Stopwatch in NOT started");
    EXPECT_EQ(stopwatch.GetElapsedTime(), 0.0);
}

TEST_F(StopwatchTest, SecondStopAddsTheTimeSinceTheLastStartOnceMore) {
    Stopwatch stopwatch;
    stopwatch.Start();
    sleep();
    stopwatch.Stop();
    const double once = stopwatch.GetElapsedTime();
    stopwatch.Stop();
    EXPECT_GE(stopwatch.GetElapsedTime(), 2.0 * once);
}

TEST_F(StopwatchTest, SecondStopThrowsWhenThrowingIsAllowed) {
    SetAllowThrow(true);
    Stopwatch stopwatch;
    stopwatch.Start();
    stopwatch.Stop();
    const double once = stopwatch.GetElapsedTime();
    EXPECT_EQ(messageOf([&] { stopwatch.Stop(); }), "Stopwatch in NOT started");
    EXPECT_EQ(stopwatch.GetElapsedTime(), once);
}

TEST_F(StopwatchTest, PairsOfStartAndStopNeverThrow) {
    SetAllowThrow(true);
    Stopwatch stopwatch;
    for (int pair = 0; pair < 3; ++pair) {
        EXPECT_NO_THROW(stopwatch.Start());
        EXPECT_NO_THROW(stopwatch.Stop());
    }
}

TEST_F(StopwatchTest, ResetOfARunningStopwatchStopsAndClearsIt) {
    Stopwatch stopwatch;
    stopwatch.Start();
    sleep();
    stopwatch.Reset();
    EXPECT_EQ(stopwatch.GetElapsedTime(), 0.0);
    SetAllowThrow(true);
    EXPECT_THROW(stopwatch.Stop(), std::runtime_error);
}

TEST_F(StopwatchTest, ResetForgetsTheSum) {
    Stopwatch stopwatch;
    stopwatch.Start();
    stopwatch.Stop();
    stopwatch.Reset();
    EXPECT_EQ(stopwatch.GetElapsedTime(), 0.0);
}

TEST_F(StopwatchTest, ResetForgetsTheStart) {
    Stopwatch stopwatch;
    stopwatch.Start();
    stopwatch.Reset();
    const double before = now();
    stopwatch.Stop();  // as without any Start: the counter itself
    EXPECT_GE(stopwatch.GetElapsedTime(), before - _tolerance);
}

TEST_F(StopwatchTest, ElapsedTimeOfAStoppedStopwatchStays) {
    Stopwatch stopwatch;
    stopwatch.Start();
    stopwatch.Stop();
    const double first = stopwatch.GetElapsedTime();
    sleep();
    EXPECT_EQ(stopwatch.GetElapsedTime(), first);
}

TEST_F(StopwatchTest, ElapsedTimeOfARunningStopwatchReachesToNow) {
    Stopwatch stopwatch;
    const double beforeStart = now();
    stopwatch.Start();
    const double afterStart = now();
    sleep();
    const double beforeReading = now();
    const double elapsed = stopwatch.GetElapsedTime();
    EXPECT_GE(elapsed, beforeReading - afterStart - _tolerance);
    EXPECT_LE(elapsed, now() - beforeStart + _tolerance);
}

TEST_F(StopwatchTest, ElapsedTimeReadTwiceWhileRunningHoldsTheFirstIntervalTwice) {
    Stopwatch stopwatch;
    const double beforeStart = now();
    stopwatch.Start();
    sleep();
    const double first = stopwatch.GetElapsedTime();
    const double second = stopwatch.GetElapsedTime();
    const double afterReading = now();
    EXPECT_GE(second, 2.0 * first);
    EXPECT_LE(second, first + (afterReading - beforeStart) + _tolerance);
}

TEST_F(StopwatchTest, StopAfterAReadingCountsTheIntervalAgain) {
    Stopwatch stopwatch;
    stopwatch.Start();
    sleep();
    const double first = stopwatch.GetElapsedTime();
    stopwatch.Stop();
    EXPECT_GE(stopwatch.GetElapsedTime(), 2.0 * first);
}

}  // namespace
}  // namespace KesVizCore
