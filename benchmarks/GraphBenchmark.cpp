// What the scene graph costs beside a plain tree of the standard library, in one run.
//
// The baseline keeps what every tree of named nodes must: an id, a name, a parent and a map of
// children. The scene graph keeps that and several parents, attributes, geometry and a filter id.
//
//     graph_benchmark [nodes]      1,000,000 nodes unless told otherwise

#include <KesVizCore/KesVizCore.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using KesVizCore::Node;

constexpr std::uint64_t kChildrenPerGroup = 100;

struct PlainNode {
    std::uint64_t id = 0;
    std::wstring name;
    PlainNode* parent = nullptr;
    std::map<std::uint64_t, std::unique_ptr<PlainNode>> children;
};

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void printRow(const char* what, double ours, double baseline) {
    std::printf("%-28s %8.3f s   plain tree %8.3f s   ratio %5.2f\n", what, ours, baseline,
                ours / baseline);
}

PlainNode* addPlain(PlainNode& parent, std::uint64_t id) {
    auto child = std::make_unique<PlainNode>();
    child->id = id;
    child->name = L"part " + std::to_wstring(id);
    child->parent = &parent;
    return parent.children.emplace(id, std::move(child)).first->second.get();
}

void buildPlain(PlainNode& root, std::uint64_t groups) {
    for (std::uint64_t group = 0; group < groups; ++group) {
        PlainNode* const parent = addPlain(root, group);
        for (std::uint64_t id = 0; id < kChildrenPerGroup; ++id) {
            addPlain(*parent, id);
        }
    }
}

void buildGraph(Node& root, std::uint64_t groups) {
    for (std::uint64_t group = 0; group < groups; ++group) {
        Node* const parent = root.CreateChild(group);
        parent->SetName(L"part " + std::to_wstring(group));
        for (std::uint64_t id = 0; id < kChildrenPerGroup; ++id) {
            parent->CreateGeoChild(id)->SetName(L"part " + std::to_wstring(id));
        }
    }
}

std::uint64_t findPlain(const PlainNode& root, std::uint64_t groups) {
    std::uint64_t sum = 0;
    for (std::uint64_t group = 0; group < groups; ++group) {
        const PlainNode& parent = *root.children.find(group)->second;
        for (std::uint64_t id = 0; id < kChildrenPerGroup; ++id) {
            sum += parent.children.find(id)->second->id;
        }
    }
    return sum;
}

std::uint64_t findInGraph(const Node& root, std::uint64_t groups) {
    std::uint64_t sum = 0;
    for (std::uint64_t group = 0; group < groups; ++group) {
        const auto* const parent = static_cast<const Node*>(root.GetChild(group));
        for (std::uint64_t id = 0; id < kChildrenPerGroup; ++id) {
            sum += parent->GetChild(id)->Id();
        }
    }
    return sum;
}

std::uint64_t pathsOfPlain(const PlainNode& root) {
    std::uint64_t sum = 0;
    for (const auto& group : root.children) {
        for (const auto& child : group.second->children) {
            std::vector<std::uint64_t> path;
            for (const PlainNode* node = child.second.get(); node != nullptr; node = node->parent) {
                path.insert(path.begin(), node->id);
            }
            sum += path.size();
        }
    }
    return sum;
}

std::uint64_t pathsOfGraph(const Node& root) {
    std::uint64_t sum = 0;
    for (const auto& group : root.Children()) {
        for (const auto& child : static_cast<const Node*>(group.second)->Children()) {
            KesVizCore::RenderId* id = child.second->GetRenderId();
            sum += static_cast<std::uint64_t>(id->Length());
            KesVizCore::RenderId::DeleteRenderId(id);
        }
    }
    return sum;
}

}  // namespace

int main(int argc, char** argv) {
    const std::uint64_t nodes = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000;
    const std::uint64_t groups = nodes / (kChildrenPerGroup + 1);
    auto plain = std::make_unique<PlainNode>();
    Node* root = Node::CreateRoot();
    std::uint64_t sums[4] = {};

    std::printf("%llu groups of %llu leaves\n", static_cast<unsigned long long>(groups),
                static_cast<unsigned long long>(kChildrenPerGroup));
    printRow("build", secondsOf([&] { buildGraph(*root, groups); }),
             secondsOf([&] { buildPlain(*plain, groups); }));
    printRow("find by id", secondsOf([&] { sums[0] = findInGraph(*root, groups); }),
             secondsOf([&] { sums[1] = findPlain(*plain, groups); }));
    printRow("path of every leaf", secondsOf([&] { sums[2] = pathsOfGraph(*root); }),
             secondsOf([&] { sums[3] = pathsOfPlain(*plain); }));
    printRow("destroy", secondsOf([&] { delete root; }), secondsOf([&] { plain.reset(); }));
    return sums[0] == sums[1] && sums[2] == sums[3] ? EXIT_SUCCESS : EXIT_FAILURE;
}
