/// @file
/// The main program of every benchmark: PROGRAM [--sizes=10000,100000] [options of Google
/// Benchmark]

#include "support/Bench.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <utility>
#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_TOGGLE_COLLECT static_cast<void>(0)
#endif

namespace bench {

namespace {

Sizes& namedSizes() {
    static Sizes sizes;
    return sizes;
}

std::vector<void (*)()>& registrations() {
    static std::vector<void (*)()> all;
    return all;
}

/// False where an argument is none of ours.
bool takeArgument(const char* argument) {
    constexpr char option[] = "--sizes=";
    if (std::strncmp(argument, option, sizeof option - 1) != 0) {
        return false;
    }
    const char* at = argument + sizeof option - 1;
    while (true) {
        char* end = nullptr;
        const long long size = std::strtoll(at, &end, 10);
        if (end == at || size < 1 || (*end != ',' && *end != '\0')) {
            return false;
        }
        namedSizes().push_back(size);
        if (*end == '\0') {
            return true;
        }
        at = end + 1;
    }
}

}  // namespace

Registered::Registered(void (*registration)()) {
    registrations().push_back(registration);
}

Sizes sizesOr(const Sizes& usual) {
    return namedSizes().empty() ? usual : namedSizes();
}

benchmark::internal::Benchmark* add(const std::string& name, std::int64_t size, Measure measure) {
    return benchmark::RegisterBenchmark(
        (name + "/" + std::to_string(size)).c_str(),
        [measure = std::move(measure), size](benchmark::State& state) { measure(state, size); });
}

void addFigure(const std::string& name, std::int64_t size,
               const std::function<double(std::int64_t size)>& figure) {
    const Measure measure = [figure](benchmark::State& state, std::int64_t of) {
        for (auto round : state) {
            static_cast<void>(round);
            state.counters["figure"] = figure(of);
        }
    };
    add(name, size, measure)->Iterations(1)->Repetitions(1);
}

void countItems(benchmark::State& state, std::int64_t itemsOfEachRound) {
    state.counters["items"] = static_cast<double>(itemsOfEachRound);
}

void startCounting() {
    CALLGRIND_TOGGLE_COLLECT;
}

void stopCounting() {
    CALLGRIND_TOGGLE_COLLECT;
}

void freshHeap() {
    malloc_trim(0);
}

}  // namespace bench

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    for (int at = 1; at < count; ++at) {
        if (!bench::takeArgument(arguments[at])) {
            std::fprintf(stderr, "%s: what is %s?\n", arguments[0], arguments[at]);
            return 2;
        }
    }
    for (void (*const registration)() : bench::registrations()) {
        registration();
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
