#include <KesVizCore/report/Stopwatch.h>

#include <gtest/gtest.h>

#include <windows.h>

namespace KesVizCore {
namespace {

double secondsOfTheSystem() {
    LARGE_INTEGER now{};
    LARGE_INTEGER frequency{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Stopped without a start, it has counted from the zero of its clock.
TEST(StopwatchWindowsTest, ItsClockIsThePerformanceCounter) {
    Stopwatch stopwatch;
    const double before = secondsOfTheSystem();
    stopwatch.Stop();
    const double after = secondsOfTheSystem();
    EXPECT_GE(stopwatch.GetElapsedTime(), before - 1e-6);
    EXPECT_LE(stopwatch.GetElapsedTime(), after + 1e-6);
}

}  // namespace
}  // namespace KesVizCore
