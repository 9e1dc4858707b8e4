#include "commands/SceneSetup.h"
#include "commands/Session.h"
#include "picking/PickIndex.h"
#include "reading/ReadFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <sstream>
#include <string>
#include <unistd.h>

namespace kesview {
namespace {

constexpr int kRoundsUntilWarm = 10;

/// KESVIEW_ROUNDS, or few.
int rounds() {
    const char* const wanted = std::getenv("KESVIEW_ROUNDS");
    return wanted != nullptr ? std::atoi(wanted) : 2 * kRoundsUntilWarm;
}

std::size_t heldMemory() {
    const auto held = ::mallinfo2();
    return held.uordblks + held.hblkhd;
}

std::size_t residentMemory() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

int picksAcross(SceneView& view) {
    int hits = 0;
    for (int y = 10; y < 100; y += 20) {
        for (int x = 10; x < 160; x += 20) {
            hits += view.Pick(x, y) ? 1 : 0;
        }
    }
    return hits;
}

std::size_t trianglesSeen(const SceneView& view) {
    std::size_t indices = 0;
    for (const TriangleBatch& batch : view.MakePicture().triangles) {
        indices += batch.triangles.size();
    }
    return indices / 3;
}

/// Every node of the model is hidden, shown, isolated, highlighted and measured.
void editEverything(Session& session) {
    SceneAdapter& adapter = session.Adapter();
    session.Index().ForEachNode([&adapter](const SceneNode& node) {
        float extrema[6] = {};
        adapter.Hide(node.renderId);
        adapter.Show(node.renderId);
        adapter.Isolate(node.renderId);
        adapter.Highlight(node.renderId, viz::RGBAColor(255, 128, 0, 255));
        adapter.GetExtents(node.renderId, extrema);
        return node.kind == SceneNode::Kind::Body ? NextStep::Over : NextStep::Into;
    });
    adapter.SetClipping(SavedView::Plane{{0, 0, 0}, {1, 0, 0}}, false);
}

/// Loads, builds, picks, edits and clears. Answers what was hit and seen before and after.
std::string liveOnce(const Document& document) {
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{out, err};
    CommonOptions options;
    Console console(streams, options);
    Session session(document, console, makePickIndex);
    SceneOptions scene;
    scene.width = 160;
    scene.height = 100;
    setUpScene(scene, session);
    std::ostringstream story;
    story << picksAcross(session.View()) << " " << trianglesSeen(session.View()) << " ";
    editEverything(session);
    story << picksAcross(session.View()) << " " << trianglesSeen(session.View()) << " ";
    session.Adapter().Clear(sceneRoot());
    story << picksAcross(session.View()) << " " << trianglesSeen(session.View());
    return story.str();
}

TEST(LongLifeTest, MemoryStaysWhereItIsAfterTheFirstRounds) {
    const Document document = readFile(KESVIEW_SAMPLE_FILE, {});
    const std::string story = liveOnce(document);
    EXPECT_EQ(story.substr(story.size() - 4), " 0 0") << "what was cleared is seen: " << story;
    EXPECT_NE(story.front(), '0') << "nothing is hit: " << story;
    for (int round = 1; round < kRoundsUntilWarm; ++round) {
        ASSERT_EQ(liveOnce(document), story);
    }
    const std::size_t held = heldMemory();
    const std::size_t resident = residentMemory();
    for (int round = kRoundsUntilWarm; round < rounds(); ++round) {
        ASSERT_EQ(liveOnce(document), story) << "round " << round;
    }
    constexpr std::size_t slackOfHeld = 64 << 10;  // threads of Embree keep buffers of their own
    constexpr std::size_t slackOfResident = 8 << 20;
    EXPECT_LT(heldMemory(), held + slackOfHeld);
    EXPECT_LT(residentMemory(), resident + slackOfResident);
    std::cout << rounds() << " rounds: held " << held << " bytes, then " << heldMemory()
              << "; resident " << (resident >> 10) << " KB, then " << (residentMemory() >> 10)
              << " KB\n";
}

}  // namespace
}  // namespace kesview
