/// @file
/// Moving vertices by a matrix, and storing them with their extrema, beside a copy of the same
/// bytes and beside a plain loop.

#include "support/Bench.h"
#include "support/Loaders.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace bench {
namespace {

// A turn about z by an angle of tangent 4 / 3, so that nothing grows however often it is applied.
float turn[4][4] = {{0.6F, 0.8F, 0, 0}, {-0.8F, 0.6F, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

struct Coordinates {
    explicit Coordinates(std::int64_t vertices) {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> anywhere(-100.0F, 100.0F);
        values.resize(3 * static_cast<std::size_t>(vertices));
        std::generate(values.begin(), values.end(), [&] { return anywhere(random); });
    }

    std::vector<float> values;
};

std::unique_ptr<viz::VizEdge> newEdge() {
    return load<viz::AVizEdgeLoader, viz::VizEdge>();
}

// --- transform ----------------------------------------------------------------------------------

void transformOurs(benchmark::State& state, std::int64_t size) {
    const auto edge = newEdge();
    edge->SetVertices(once<Coordinates>(size).values);
    timeRounds(state, [&] { edge->ApplyTransform(turn); });
    countItems(state, size);
}

void transformByLoop(std::vector<float>& points, const float* m) {
    for (std::size_t at = 0; at + 2 < points.size(); at += 3) {
        const float x = points[at];
        const float y = points[at + 1];
        const float z = points[at + 2];
        points[at] = m[0] * x + m[4] * y + m[8] * z + m[12];
        points[at + 1] = m[1] * x + m[5] * y + m[9] * z + m[13];
        points[at + 2] = m[2] * x + m[6] * y + m[10] * z + m[14];
    }
}

void transformPlain(benchmark::State& state, std::int64_t size) {
    std::vector<float> points = once<Coordinates>(size).values;
    timeRounds(state, [&] {
        transformByLoop(points, turn[0]);
        benchmark::ClobberMemory();
    });
    countItems(state, size);
}

void copyOver(benchmark::State& state, std::int64_t size) {
    const std::vector<float>& from = once<Coordinates>(size).values;
    std::vector<float> to(from.size());
    timeRounds(state, [&] {
        std::memcpy(to.data(), from.data(), from.size() * sizeof(float));
        benchmark::ClobberMemory();
    });
    countItems(state, size);
}

// --- store with extrema -------------------------------------------------------------------------

void storeOurs(benchmark::State& state, std::int64_t size) {
    const std::vector<float>& values = once<Coordinates>(size).values;
    timeRounds(state, [&] {
        const auto edge = newEdge();
        edge->SetVertices(values);
        benchmark::DoNotOptimize(edge->GetVertices().data());
    });
    countItems(state, size);
}

void storePlain(benchmark::State& state, std::int64_t size) {
    const std::vector<float>& values = once<Coordinates>(size).values;
    timeRounds(state, [&] {
        std::vector<float> stored = values;
        float low[3] = {stored[0], stored[1], stored[2]};
        float high[3] = {stored[0], stored[1], stored[2]};
        for (std::size_t at = 3; at + 2 < stored.size(); at += 3) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                low[axis] = std::min(low[axis], stored[at + axis]);
                high[axis] = std::max(high[axis], stored[at + axis]);
            }
        }
        benchmark::DoNotOptimize(low);
        benchmark::DoNotOptimize(high);
    });
    countItems(state, size);
}

/// Into new memory, as the vertices are.
void copyAnew(benchmark::State& state, std::int64_t size) {
    const std::vector<float>& from = once<Coordinates>(size).values;
    timeRounds(state, [&] {
        const std::unique_ptr<float[]> to(new float[from.size()]);
        std::memcpy(to.get(), from.data(), from.size() * sizeof(float));
        benchmark::DoNotOptimize(to.get());
    });
    countItems(state, size);
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({1'000'000})) {
        add("transform vertices/ours", size, transformOurs);
        add("transform vertices/memcpy", size, copyOver);
        add("transform vertices/plain loop", size, transformPlain);
        add("set vertices/ours", size, storeOurs);
        add("set vertices/memcpy", size, copyAnew);
        add("set vertices/plain loop", size, storePlain);
    }
});

}  // namespace
}  // namespace bench
