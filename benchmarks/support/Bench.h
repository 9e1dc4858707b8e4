#pragma once

/// @file
/// How the programs of this folder say what they measure.
///
/// A measurement is called WORK/WHO/SIZE, such as "build/ours/10000" and "build/plain/10000":
/// scripts/bench sets what is "ours" beside every other WHO of the same work and size. The rows and
/// goals of its table stand in rows.py.

#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bench {

using Sizes = std::vector<std::int64_t>;
using Measure = std::function<void(benchmark::State& state, std::int64_t size)>;

/// The sizes named on the command line, or these where it names none.
Sizes sizesOr(const Sizes& usual);

/// Registers a measurement; @p name is WORK/WHO.
benchmark::internal::Benchmark* add(const std::string& name, std::int64_t size, Measure measure);

/// Registers a figure that is no time, such as bytes, and is the same however often it is asked
/// for.
void addFigure(const std::string& name, std::int64_t size,
               const std::function<double(std::int64_t size)>& figure);

/// One of these at namespace scope has main call a function that registers measurements.
class Registered {
public:
    explicit Registered(void (*registration)());
};

/// Says of how many items a round is: nodes, look-ups, characters. The table tells the time of one.
void countItems(benchmark::State& state, std::int64_t itemsOfEachRound);

/// Between them callgrind counts instructions, where it runs the program (scripts/bench --profile).
void startCounting();
void stopCounting();

/// Times @p work.
template <typename Work>
void timeRounds(benchmark::State& state, const Work& work) {
    for (auto round : state) {
        static_cast<void>(round);
        startCounting();
        work();
        stopCounting();
    }
}

/// What measurements that change nothing work on, made on the first call for that size and kept.
template <typename Subject>
Subject& once(std::int64_t size) {
    static auto& subjects = *new std::map<std::int64_t, std::unique_ptr<Subject>>();  // not freed
    auto& subject = subjects[size];
    if (subject == nullptr) {
        subject = std::make_unique<Subject>(size);
    }
    return *subject;
}

/// Hands freed memory back to the system, so that what is built next does not depend on what was
/// freed before.
void freshHeap();

/// Times @p work alone on something that @p make made for it and that is destroyed afterwards.
template <typename Make, typename Work>
void timeOnFresh(benchmark::State& state, const Make& make, const Work& work) {
    for (auto round : state) {
        static_cast<void>(round);
        state.PauseTiming();
        freshHeap();
        {
            const auto subject = make();
            state.ResumeTiming();
            startCounting();
            work(*subject);
            stopCounting();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

}  // namespace bench
