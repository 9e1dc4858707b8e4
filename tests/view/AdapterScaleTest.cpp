// Depth is the host's choice: chains far deeper than a thread's stack could follow by recursion.

#include "support/Scale.h"
#include "view/ViewTestKit.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <pthread.h>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::RecordingAdapter;

const int kLevels = support::scaled(1000000);

/// Runs @p work on a thread with a stack of 256 KB and waits for it.
void onSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024), 0);
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread;
    auto* const argument = const_cast<std::function<void()>*>(&work);
    ASSERT_EQ(pthread_create(&thread, &attributes, run, argument), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    ASSERT_EQ(pthread_attr_destroy(&attributes), 0);
}

/// A host that opens and closes without writing it down, and counts.
class CountingAdapter : public RecordingAdapter {
public:
    bool OpenNode(const std::uint64_t& id, const std::wstring& /*name*/) override {
        auto* const group = dynamic_cast<Node*>(GetCurrentOpenNode());
        GeoNode* const node = id == 1            ? _rootNode
                              : group == nullptr ? nullptr
                                                 : group->GetChild(id);
        if (node == nullptr) {
            return false;
        }
        ++opened;
        _openNodes.push(node);
        return true;
    }
    void CloseNode() override {
        ++closed;
        _openNodes.pop();
    }
    int opened = 0;
    int closed = 0;
};

/// Hangs groups of the ids 2 to @p levels one below the other; answers the last.
Node* growChain(Node* root, int levels) {
    Node* last = root;
    for (int id = 2; id <= levels; ++id) {
        last = last->CreateChild(static_cast<std::uint64_t>(id));
    }
    return last;
}

RenderId chainPath(int levels) {
    RenderId path;
    path.SetOrigin(View3D);
    path.SetLength(levels);
    for (int level = 0; level < levels; ++level) {
        path[level] = static_cast<std::uint64_t>(level) + 1;
    }
    return path;
}

TEST(AdapterScaleTest, FindsTheEndOfAMillionLevels) {
    onSmallStack([] {
        RecordingAdapter adapter;
        Node* const last = growChain(adapter._rootNode, kLevels);
        RenderId path = chainPath(kLevels);
        EXPECT_EQ(adapter.GetNode(path), last);
        path[kLevels - 1] = 7;
        EXPECT_EQ(adapter.GetNode(path), nullptr);
    });
}

TEST(AdapterScaleTest, OpensAMillionLevels) {
    onSmallStack([] {
        CountingAdapter adapter;
        Node* const last = growChain(adapter._rootNode, kLevels);
        EXPECT_TRUE(adapter.OpenNodes(chainPath(kLevels)));
        EXPECT_EQ(adapter.opened, kLevels);
        EXPECT_EQ(adapter.GetCurrentOpenNode(), last);
    });
}

TEST(AdapterScaleTest, DeletesTheEndOfAMillionLevels) {
    onSmallStack([] {
        CountingAdapter adapter;
        Node* const lastButOne = growChain(adapter._rootNode, kLevels - 1);
        lastButOne->CreateChild(static_cast<std::uint64_t>(kLevels));
        adapter.openOnly(adapter._rootNode);
        EXPECT_TRUE(adapter.DeleteNode(chainPath(kLevels)));
        EXPECT_FALSE(lastButOne->HasChildren());
        EXPECT_EQ(adapter.opened, kLevels - 1);
        EXPECT_EQ(adapter.closed, kLevels - 1);
        EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
    });
}

TEST(AdapterScaleTest, DeletesAllOfAMillionLevelsByOneId) {
    onSmallStack([] {
        std::vector<std::uint64_t> destroyed;
        RecordingAdapter adapter;
        growChain(adapter._rootNode, kLevels)->AddGeometry(support::newItem(5, &destroyed));
        adapter.openOnly(adapter._rootNode);
        EXPECT_TRUE(adapter.DeleteNode(2));
        EXPECT_FALSE(adapter._rootNode->HasChildren());
        EXPECT_EQ(destroyed, std::vector<std::uint64_t>{5});
    });
}

TEST(AdapterScaleTest, ClearsTheEndOfAMillionLevels) {
    onSmallStack([] {
        std::vector<std::uint64_t> destroyed;
        CountingAdapter adapter;
        Node* const last = growChain(adapter._rootNode, kLevels);
        last->AddGeometry(support::newItem(5, &destroyed));
        adapter.Clear(chainPath(kLevels));
        EXPECT_EQ(destroyed, std::vector<std::uint64_t>{5});
        EXPECT_EQ(adapter.opened, kLevels);
        EXPECT_TRUE(adapter._openNodes.empty());
    });
}

TEST(AdapterScaleTest, ClearsAMillionLevelsFromTheTop) {
    onSmallStack([] {
        std::vector<std::uint64_t> destroyed;
        CountingAdapter adapter;
        growChain(adapter._rootNode, kLevels)->AddGeometry(support::newItem(5, &destroyed));
        adapter.Clear(chainPath(2));
        EXPECT_EQ(destroyed, std::vector<std::uint64_t>{5});
        EXPECT_TRUE(adapter._rootNode->HasChildren());
        EXPECT_FALSE(static_cast<Node*>(adapter._rootNode->GetChild(2))->HasChildren());
    });
}

// --- the dump, whose indentation alone makes 400 million characters -----------------------------

const int kDumpedLevels = support::scaled(20000);

std::string dumpedLine(int level) {
    const std::string id = std::to_string(level + 1);
    std::string line(2 * static_cast<std::size_t>(level), ' ');
    line += "Node [" + id + "] '" + (level == 0 ? "ROOT" : "") +
            "', parents: " + (level == 0 ? "0" : "1") + " ";
    return line + (level + 1 < kDumpedLevels ? ", children: 1 \n" : "   geometry objects: 0  \n");
}

/// The number of characters before each line, and at the end the number of all.
std::vector<std::size_t> dumpedOffsets() {
    std::vector<std::size_t> offsets = {0};
    for (int level = 0; level < kDumpedLevels; ++level) {
        offsets.push_back(offsets.back() + dumpedLine(level).size());
    }
    return offsets;
}

TEST(AdapterScaleTest, DumpsTwentyThousandLevels) {
    const std::vector<std::size_t> offsets = dumpedOffsets();
    const auto levels = static_cast<std::size_t>(kDumpedLevels);
    ASSERT_GT(offsets.back(), levels * levels);
    std::string text;
    text.reserve(offsets.back());  // keeps the test at one copy of so much text
    onSmallStack([&text] {
        RecordingAdapter adapter;
        growChain(adapter._rootNode, kDumpedLevels);
        adapter.GetSceneStructure(text, false);
    });
    ASSERT_EQ(text.size(), offsets.back());
    const int middle = kDumpedLevels / 2;
    for (const int level :
         {0, 1, 2, 98, 99, middle - 2, middle - 1, middle, kDumpedLevels - 2, kDumpedLevels - 1}) {
        const std::string line = dumpedLine(level);
        const std::size_t offset = offsets[static_cast<std::size_t>(level)];
        EXPECT_EQ(text.compare(offset, line.size(), line), 0) << "level " << level;
    }
}

}  // namespace
}  // namespace KesVizCore
