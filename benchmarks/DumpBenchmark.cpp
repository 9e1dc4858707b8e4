/// @file
/// The text of a scene's structure, and a walk of its report into one that only counts.

#include "support/Bench.h"
#include "support/OurScene.h"
#include "support/PlainScene.h"

#include <sstream>
#include <string>

namespace bench {
namespace {

template <typename Scene>
struct Built {
    explicit Built(std::int64_t size) : scene(Scene::Built(SceneModel(size))) {}

    std::unique_ptr<Scene> scene;
};

// --- structure dump -----------------------------------------------------------------------------

/// Writes the text that GetSceneStructure appends.
void dump(const PlainNode& node, int indentation, std::ostream& out) {
    out << std::string(static_cast<std::size_t>(indentation), ' ') << "Node [" << node.id << "] '"
        << std::string(node.name.begin(), node.name.end())
        << "', parents: " << (node.parent != nullptr ? 1 : 0) << ' ';
    if (node.children.empty()) {
        out << "   geometry objects: " << node.geometry.size() << ' ';
    } else {
        out << ", children: " << node.children.size();
    }
    out << (node.attributes.empty() ? " " : " , Attr:");
    for (std::size_t at = 0; at < node.attributes.size(); ++at) {
        out << " Co";
    }
    out << '\n';
    for (const auto& child : node.children) {
        dump(*child.second, indentation + 2, out);
    }
}

std::string ourText(std::int64_t size) {
    std::string text;
    once<Built<OurScene>>(size).scene->adapter.GetSceneStructure(text, false);
    return text;
}

std::string plainText(std::int64_t size) {
    std::ostringstream out;
    dump(*once<Built<PlainScene>>(size).scene->root, 0, out);
    return out.str();
}

template <std::string (*textOf)(std::int64_t)>
void structureDump(benchmark::State& state, std::int64_t size) {
    static const bool same = ourText(size) == plainText(size);
    if (!same) {
        state.SkipWithError("the two texts differ");
        return;
    }
    std::size_t length = 0;
    timeRounds(state, [&] { length = textOf(size).size(); });
    countItems(state, static_cast<std::int64_t>(length));
}

// --- report walk --------------------------------------------------------------------------------

/// Counts the characters that a report would have to write: those of names and texts, the digits
/// of numbers.
class CountingReport final : public viz::AReport {
public:
    std::size_t Characters() const { return _characters; }

protected:
    void start(std::string name) override { _characters += name.size(); }
    void end() override {}
    void openElement(std::string name) override { _characters += name.size(); }
    void closeElement() override {}
    void addAttribute(std::string name, bool /*value*/) override { _characters += name.size() + 1; }
    void addAttribute(std::string name, std::uint64_t value) override {
        _characters += name.size() + 1;
        for (; value > 9; value /= 10) {
            ++_characters;
        }
    }
    void addAttribute(std::string name, std::wstring value) override {
        _characters += name.size() + value.size();
    }
    void addAttribute(std::string name, double /*value*/) override {
        _characters += name.size() + 1;
    }
    void addComment(std::wstring comment) override { _characters += comment.size(); }
    void addText(std::wstring text) override { _characters += text.size(); }
    std::wstring toText() const override { return std::wstring(); }
    bool saveTo(std::wstring) const override { return false; }
    bool restore(std::wstring) override { return false; }
    bool compare(const AReport&, std::wstring&, std::string&) const override { return false; }

private:
    std::size_t _characters = 0;
};

void reportWalk(benchmark::State& state, std::int64_t size) {
    viz::Node& root = once<Built<OurScene>>(size).scene->adapter.Root();
    std::size_t characters = 0;
    timeRounds(state, [&] {
        CountingReport report;
        root.GetReport(report);
        characters = report.Characters();
    });
    countItems(state, static_cast<std::int64_t>(characters));
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({10'000, 100'000, 1'000'000})) {
        add("structure dump/ours", size, structureDump<ourText>);
        add("structure dump/ostream", size, structureDump<plainText>);
        add("report walk/ours", size, reportWalk);
    }
});

}  // namespace
}  // namespace bench
