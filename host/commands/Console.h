#pragma once

/// @file
/// All that a verb says beside its data: errors, warnings, progress and times.

#include "commands/Options.h"
#include "commands/Streams.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace spdlog {
class logger;
}

namespace kesview {

/// The error stream of one run. Texts may hold what stood in a file: they are made plain.
class Console {
public:
    Console(Streams& streams, const CommonOptions& options);
    /// Writes the times, where they were asked for.
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    void Error(const std::string& message);
    void Warn(const std::string& message);
    void Note(const std::string& message);  ///< seen with --verbose

    /// On a terminal, and unless --quiet, one line that is written over: "reading 45 %".
    void Progress(const std::string& stage, double fraction);

    /// Runs @p work as a stage that --time lists.
    template <typename Work>
    auto Timed(const std::string& stage, Work&& work) {
        const Stage running(*this, stage);
        return std::forward<Work>(work)();
    }

private:
    class Stage {
    public:
        Stage(Console& console, const std::string& name);
        ~Stage();
        Stage(const Stage&) = delete;
        Stage& operator=(const Stage&) = delete;

    private:
        class Impl;
        std::unique_ptr<Impl> _impl;
    };

    void clearProgress();

    Streams& _streams;
    bool _showsProgress;
    bool _showsTimes;
    bool _progressOpen = false;
    std::string _lastProgress;
    std::vector<std::pair<std::string, double>> _times;  // stage, seconds
    std::shared_ptr<spdlog::logger> _log;
};

}  // namespace kesview
