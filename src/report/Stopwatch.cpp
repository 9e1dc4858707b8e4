#include "platform/Platform.h"

#include <KesVizCore/report/AllowThrow.h>
#include <KesVizCore/report/Stopwatch.h>

#include <stdexcept>

namespace KesVizCore {

Stopwatch::Stopwatch() : _running(false), _start(0), _accumulated(0) {}

Stopwatch::~Stopwatch() {
    Reset();
}

void Stopwatch::Start() {
    if (_running && GetAllowThrow()) {
        throw std::runtime_error("Stopwatch in already started");
    }
    _running = true;
    _start = platform::counterNow();
}

void Stopwatch::Stop() {
    if (!_running && GetAllowThrow()) {
        throw std::runtime_error("Stopwatch in NOT started");
    }
    _running = false;
    addTimeSinceStart();
}

void Stopwatch::Reset() {
    _running = false;
    _start = 0;
    _accumulated = 0;
}

double Stopwatch::GetElapsedTime() {
    if (_running) {
        addTimeSinceStart();
    }
    return static_cast<double>(_accumulated) / static_cast<double>(platform::counterFrequency());
}

void Stopwatch::addTimeSinceStart() {
    // The sum grows with the square of the running time where it is read regularly, and comes to
    // its end within days; unsigned numbers wrap there, signed ones have no defined result.
    const auto sum = static_cast<std::uint64_t>(_accumulated) +
                     static_cast<std::uint64_t>(platform::counterNow()) -
                     static_cast<std::uint64_t>(_start);
    _accumulated = static_cast<std::int64_t>(sum);
}

}  // namespace KesVizCore
