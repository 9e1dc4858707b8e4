/// @file
/// Finding entities by their entries by Open CASCADE's application framework.

#include "peers/OcafScene.h"
#include "support/Bench.h"

#include <TCollection_AsciiString.hxx>
#include <TDF_Tool.hxx>

namespace bench {
namespace {

/// A scene, and the entries of some of its entities in random order, such as
/// "0:1:2:1000:10002:7".
struct Subject {
    explicit Subject(std::int64_t size) {
        constexpr std::size_t atMost = 10'000;  // of a scene however large: each takes its time
        const SceneModel model(size);
        scene.Build(OcafModel(model));
        std::vector<Path> paths = shuffledPaths(model);
        paths.resize(std::min(paths.size(), atMost));
        for (const Path& path : paths) {
            std::string entry = "0";
            for (const std::uint64_t id : path) {
                entry += ":" + std::to_string(id);
            }
            entries.emplace_back(entry.c_str());
        }
    }

    OcafScene scene;
    std::vector<TCollection_AsciiString> entries;
};

void lookUp(benchmark::State& state, std::int64_t size) {
    const Subject& subject = once<Subject>(size);
    std::size_t found = 0;
    timeRounds(state, [&] {
        found = 0;
        for (const TCollection_AsciiString& entry : subject.entries) {
            TDF_Label label;
            TDF_Tool::Label(subject.scene.Data(), entry, label);
            found += label.IsNull() ? 0U : 1U;
        }
    });
    if (found != subject.entries.size()) {
        state.SkipWithError("a label was not found");
    }
    countItems(state, static_cast<std::int64_t>(subject.entries.size()));
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("look-up/OCAF", size, lookUp);
    }
});

}  // namespace
}  // namespace bench
