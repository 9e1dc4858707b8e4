#include <KesVizCore/report/Stopwatch.h>

#include <gtest/gtest.h>

#include <time.h>

namespace KesVizCore {
namespace {

double secondsOfTheSystem() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Stopped without a start, it has counted from the zero of its clock.
TEST(StopwatchPosixTest, ItsClockIsTheMonotonicClock) {
    for (int reading = 0; reading < 10; ++reading) {  // the later ones lie close together
        Stopwatch stopwatch;
        const double before = secondsOfTheSystem();
        stopwatch.Stop();
        const double after = secondsOfTheSystem();
        EXPECT_GE(stopwatch.GetElapsedTime(), before - 1e-6);
        EXPECT_LE(stopwatch.GetElapsedTime(), after + 1e-6);
    }
}

}  // namespace
}  // namespace KesVizCore
