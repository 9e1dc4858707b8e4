#include "commands/Console.h"

#include "commands/Text.h"

#include <KesVizCore/report/Stopwatch.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <spdlog/logger.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/ostream_sink.h>

namespace kesview {

namespace viz = KesVizCore;

namespace {

/// "error", "warning" or "note", coloured where that is wanted.
class SeverityFlag : public spdlog::custom_flag_formatter {
public:
    explicit SeverityFlag(bool colors) : _colors(colors) {}

    void format(const spdlog::details::log_msg& message, const std::tm&,
                spdlog::memory_buf_t& out) override {
        const bool error = message.level >= spdlog::level::err;
        const bool warning = message.level == spdlog::level::warn;
        const std::string word = error ? "error" : warning ? "warning" : "note";
        const std::string start = error ? "\033[31m" : warning ? "\033[33m" : "\033[2m";
        const std::string text = _colors ? start + word + "\033[0m" : word;
        out.append(text.data(), text.data() + text.size());
    }

    std::unique_ptr<custom_flag_formatter> clone() const override {
        return std::make_unique<SeverityFlag>(_colors);
    }

private:
    bool _colors;
};

std::shared_ptr<spdlog::logger> makeLog(Streams& streams, const CommonOptions& options) {
    auto sink = std::make_shared<spdlog::sinks::ostream_sink_st>(streams.err, true);
    auto log = std::make_shared<spdlog::logger>("kesview", std::move(sink));
    auto formatter = std::make_unique<spdlog::pattern_formatter>();
    formatter->add_flag<SeverityFlag>('q', streams.colorsErr).set_pattern("kesview: %q: %v");
    log->set_formatter(std::move(formatter));
    log->set_level(options.quiet     ? spdlog::level::err
                   : options.verbose ? spdlog::level::info
                                     : spdlog::level::warn);
    return log;
}

}  // namespace

class Console::Stage::Impl {
public:
    Impl(Console& console, const std::string& name) : _console(console), _name(name) {
        _stopwatch.Start();
    }

    void Finish() {
        _stopwatch.Stop();
        _console._times.emplace_back(_name, _stopwatch.GetElapsedTime());
        _console.clearProgress();
    }

private:
    Console& _console;
    std::string _name;
    viz::Stopwatch _stopwatch;
};

Console::Stage::Stage(Console& console, const std::string& name)
    : _impl(std::make_unique<Impl>(console, name)) {}

Console::Stage::~Stage() {
    _impl->Finish();
}

Console::Console(Streams& streams, const CommonOptions& options)
    : _streams(streams),
      _showsProgress(streams.errIsTerminal && !options.quiet),
      _showsTimes(options.time),
      _log(makeLog(streams, options)) {}

Console::~Console() {
    clearProgress();
    if (!_showsTimes) {
        return;
    }
    double total = 0;
    for (const auto& [stage, seconds] : _times) {
        char line[96];
        std::snprintf(line, sizeof line, "%9.3f s  %s\n", seconds, stage.c_str());
        _streams.err << line;
        total += seconds;
    }
    char line[96];
    std::snprintf(line, sizeof line, "%9.3f s  in all\n", total);
    _streams.err << line;
}

void Console::Error(const std::string& message) {
    clearProgress();
    _log->error(plainText(message));
}

void Console::Warn(const std::string& message) {
    clearProgress();
    _log->warn(plainText(message));
}

void Console::Note(const std::string& message) {
    clearProgress();
    _log->info(plainText(message));
}

void Console::Progress(const std::string& stage, double fraction) {
    if (!_showsProgress) {
        return;
    }
    const double bounded = std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
    const std::string line =
        plainText(stage) + " " + std::to_string(static_cast<int>(bounded * 100)) + " %";
    if (line == _lastProgress) {
        return;
    }
    _streams.err << "\r\033[K" << line << std::flush;
    _lastProgress = line;
    _progressOpen = true;
}

void Console::clearProgress() {
    if (_progressOpen) {
        _streams.err << "\r\033[K" << std::flush;
    }
    _progressOpen = false;
    _lastProgress.clear();
}

}  // namespace kesview
