/// @file
/// Signed numbers for host ids with the top bit set, where each of them collides with a number that
/// another id has, beside ids that do not collide.

#include "support/Bench.h"

#include <KesVizCore/scene/ARenderer.h>

#include <ctime>

namespace bench {
namespace {

namespace viz = KesVizCore;

/// Opens the numbers, which belong to the process. It forgets them all when it is destroyed.
class Numbers final : public viz::ARenderer {
public:
    Numbers() : ARenderer(nullptr, nullptr) {}

    using ARenderer::getSignedId;

    std::wstring GetName() const override { return std::wstring(); }
    bool Render() override { return false; }
    bool Update() override { return false; }
    void Clear() override {}
    bool IsEmpty() const override { return true; }
    bool Deactivate(viz::RenderId&) override { return false; }
    bool Show(const viz::RenderId&) override { return false; }
    bool Hide(const viz::RenderId&) override { return false; }
    bool GetEntityId(const viz::RenderId&, viz::EntityId&) const override { return false; }
    bool GetRenderId(const viz::EntityId&, viz::RenderId&) const override { return false; }
};

/// Asks for numbers one by one, and gives up after some seconds: what is not linear would take
/// days. Answers how many there were.
std::int64_t askFor(std::uint64_t firstId, std::int64_t count) {
    constexpr std::clock_t patience = 3 * CLOCKS_PER_SEC;
    const std::clock_t start = std::clock();
    for (std::int64_t done = 0; done < count; ++done) {
        if (done % 16 == 0 && std::clock() - start > patience) {
            return done;
        }
        const std::uint64_t number =
            Numbers::getSignedId(firstId + static_cast<std::uint64_t>(done));
        benchmark::DoNotOptimize(number);
    }
    return count;
}

/// The numbers 0 to size - 1 are taken; the ids that are asked for would have those from
/// @p firstNumber on.
void signedIds(benchmark::State& state, std::int64_t size, std::int64_t firstNumber) {
    constexpr std::uint64_t idOfNumberZero = (std::uint64_t{1} << 63) + 1;
    std::int64_t done = 0;
    const auto make = [&] {
        auto numbers = std::make_unique<Numbers>();
        for (std::int64_t id = 0; id < size; ++id) {
            Numbers::getSignedId(static_cast<std::uint64_t>(id));
        }
        return numbers;
    };
    timeOnFresh(state, make, [&](const Numbers&) {
        done = askFor(idOfNumberZero + static_cast<std::uint64_t>(firstNumber), size);
    });
    countItems(state, done);
    if (done < size) {
        state.SetLabel("gave up after " + std::to_string(done));
    }
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("signed ids/ours", size,
            [](benchmark::State& state, std::int64_t of) { signedIds(state, of, 0); });
        add("signed ids/free", size,
            [](benchmark::State& state, std::int64_t of) { signedIds(state, of, of); });
    }
});

}  // namespace
}  // namespace bench
