#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>

namespace KesVizCore {

/// Adds up the time between calls of Start and Stop, on the machine's high-resolution counter.
///
/// Start and Stop make a pair; between them the stopwatch is running. Out of order they throw
/// only while the allow-throw switch is on (SetAllowThrow). While it is off, a second Start
/// begins the interval anew and loses the time since the first, and a Stop while not running
/// adds the time since the last Start once more. Never started, that Start counts as the zero of
/// the machine's counter.
///
/// @par Units and ranges
/// Seconds, as fine as the machine's counter. The sum is kept in 64-bit counter ticks and wraps
/// around.
///
/// @par Errors
/// std::runtime_error from Start and Stop, only while the allow-throw switch is on; the
/// stopwatch then stays as it was.
///
/// @par Threads
/// A plain value: one thread at a time, reading included, since reading changes it.
class KESVIZCORE_API Stopwatch {
public:
    /// Not running, with no time on it.
    Stopwatch();
    /// Leaves the fields as Reset does.
    ~Stopwatch();

    /// Begins an interval. While running it throws "Stopwatch in already started", or begins anew.
    void Start();

    /// Ends the interval and adds its length to the sum. While not running it throws "Stopwatch
    /// in NOT started", or adds the time since the last Start once more.
    void Stop();

    /// Back to not running, with no time on it.
    void Reset();

    /// The sum of all intervals in seconds.
    ///
    /// While running, each call first adds the whole time since Start to the sum and keeps it
    /// there: a second call counts the first interval twice, and so does a later Stop.
    double GetElapsedTime();

private:
    void addTimeSinceStart();

    bool _running;
    std::int64_t _start;
    std::int64_t _accumulated;
};

}  // namespace KesVizCore
