// What the adapter holds and what it forwards. The edits and look-ups have files of their own.

#include "view/ViewTestKit.h"

#include <KesVizCore/view/AView3DAdapter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::RecordingAdapter;
using support::RecordingView;
using testing::ElementsAre;
using testing::IsEmpty;

/// Counts its own deaths.
template <typename Base>
class Telling : public Base {
public:
    explicit Telling(int& deaths) : _deaths(deaths) {}
    ~Telling() override { ++_deaths; }

private:
    int& _deaths;
};

class QuietFilterManager : public AFilterManager {
public:
    void SetVisible(int, bool) override {}
    bool IsVisible(int) const override { return true; }
    void Reset() override {}
};

class QuietStrategy : public IViewDoUndoStrategy {
public:
    bool Apply(const RenderId&) override { return false; }
    bool Undo(const RenderId&) override { return false; }
    void UndoAll() override {}
    bool IsApplied(const RenderId&) override { return false; }
};

/// Runs the library's own bodies of what RecordingAdapter overrides.
class PlainConstructionAdapter : public RecordingAdapter {
public:
    void StartConstruction(Node* node) override { AView3DAdapter::StartConstruction(node); }
    void EndConstruction() override { AView3DAdapter::EndConstruction(); }
};

// --- construction, copies, destruction ----------------------------------------------------------

TEST(AView3DAdapterTest, HostsAloneMakeOne) {
    EXPECT_TRUE(std::is_abstract_v<AView3DAdapter>);
    EXPECT_TRUE(std::is_copy_assignable_v<AView3DAdapter>);
    EXPECT_TRUE(std::has_virtual_destructor_v<AView3DAdapter>);
}

TEST(AView3DAdapterTest, StartsWithoutRootBuildersManagerStrategiesAndOpenNodes) {
    const RecordingAdapter adapter(false);
    EXPECT_EQ(adapter._rootNode, nullptr);
    EXPECT_TRUE(adapter._sceneBuilders.empty());
    EXPECT_EQ(adapter._filterManager, nullptr);
    EXPECT_EQ(adapter._highlightStrategy, nullptr);
    EXPECT_EQ(adapter._hideStrategy, nullptr);
    EXPECT_TRUE(adapter._openNodes.empty());
}

TEST(AView3DAdapterTest, StartsWithAnEmptySelectionHolderOfItsOwn) {
    const RecordingAdapter adapter;
    const RecordingAdapter other;
    ASSERT_NE(adapter.GetSelectionHolder(), nullptr);
    EXPECT_TRUE(adapter.GetSelectionHolder()->IsEmpty());
    EXPECT_NE(adapter.GetSelectionHolder(), other.GetSelectionHolder());
}

/// Fills every member of @p adapter that a copy shares.
void fill(RecordingAdapter& adapter, QuietStrategy& highlight, QuietStrategy& hide) {
    adapter._filterManager = new QuietFilterManager();
    adapter.SetHighlightStrategy(&highlight);
    adapter.SetHideStrategy(&hide);
    adapter._sceneBuilders = {nullptr, nullptr};
    adapter._openNodes.push(adapter._rootNode);
}

void expectSameMembers(const RecordingAdapter& copy, const RecordingAdapter& original) {
    EXPECT_EQ(copy._rootNode, original._rootNode);
    EXPECT_EQ(copy._sceneBuilders, original._sceneBuilders);
    EXPECT_EQ(copy.GetFilterManager(), original.GetFilterManager());
    EXPECT_EQ(copy.GetHighlightStrategy(), original.GetHighlightStrategy());
    EXPECT_EQ(copy.GetHideStrategy(), original.GetHideStrategy());
    EXPECT_EQ(copy.GetSelectionHolder(), original.GetSelectionHolder());
    EXPECT_EQ(copy._openNodes, original._openNodes);
}

TEST(AView3DAdapterTest, CopySharesEveryPointer) {
    QuietStrategy highlight;
    QuietStrategy hide;
    RecordingAdapter adapter;
    fill(adapter, highlight, hide);
    RecordingAdapter copy(static_cast<const AView3DAdapter&>(adapter));
    expectSameMembers(copy, adapter);
    copy.letGo();
}

TEST(AView3DAdapterTest, AssignmentSharesEveryPointer) {
    QuietStrategy highlight;
    QuietStrategy hide;
    RecordingAdapter adapter;
    fill(adapter, highlight, hide);
    RecordingAdapter assigned(false);
    const std::unique_ptr<SelectionHolder> replaced(assigned.GetSelectionHolder());
    static_cast<AView3DAdapter&>(assigned) = adapter;
    expectSameMembers(assigned, adapter);
    assigned.letGo();
}

TEST(AView3DAdapterTest, OpenNodesOfACopyAreItsOwn) {
    RecordingAdapter adapter;
    adapter._openNodes.push(adapter._rootNode);
    RecordingAdapter copy(static_cast<const AView3DAdapter&>(adapter));
    copy.closeAll();
    EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
    copy.letGo();
}

TEST(AView3DAdapterTest, DestructorDestroysTheFilterManager) {
    int deaths = 0;
    {
        RecordingAdapter adapter;
        adapter._filterManager = new Telling<QuietFilterManager>(deaths);
    }
    EXPECT_EQ(deaths, 1);
}

/// Looks at its adapter when it is destroyed.
class LookingFilterManager : public QuietFilterManager {
public:
    LookingFilterManager(AView3DAdapter& adapter, std::string& seen)
        : _adapter(adapter), _seen(seen) {}
    LookingFilterManager(const LookingFilterManager&) = delete;
    LookingFilterManager& operator=(const LookingFilterManager&) = delete;
    ~LookingFilterManager() override {
        _seen = _adapter.GetSelectionHolder() == nullptr ? "no holder" : "a holder";
        try {
            _adapter.GetNode(RenderId(std::vector<std::uint64_t>{1}, View3D));
            _seen += ", a root";
        } catch (const std::runtime_error&) {
            _seen += ", no root";
        }
    }

private:
    AView3DAdapter& _adapter;
    std::string& _seen;
};

TEST(AView3DAdapterTest, DestructorForgetsTheRootAndTheHolderBeforeTheFilterManagerGoes) {
    std::string seen;
    {
        RecordingAdapter adapter;
        adapter._filterManager = new LookingFilterManager(adapter, seen);
    }
    EXPECT_EQ(seen, "no holder, no root");
}

TEST(AView3DAdapterTest, DestructorDestroysTheSelectionHolder) {
    int deaths = 0;
    {
        RecordingAdapter adapter;
        delete adapter._selectionHolder;
        adapter._selectionHolder = new Telling<SelectionHolder>(deaths);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(AView3DAdapterTest, DestructorLeavesTheStrategies) {
    int deaths = 0;
    Telling<QuietStrategy> highlight(deaths);
    Telling<QuietStrategy> hide(deaths);
    {
        RecordingAdapter adapter;
        adapter.SetHighlightStrategy(&highlight);
        adapter.SetHideStrategy(&hide);
    }
    EXPECT_EQ(deaths, 0);
}

TEST(AView3DAdapterTest, DestructorLeavesTheGraph) {
    std::unique_ptr<Node> root;
    {
        RecordingAdapter adapter;
        adapter.ownsRoot = false;
        root.reset(adapter._rootNode);
        support::addLeaf(adapter._rootNode, 2, L"A");
        adapter._openNodes.push(adapter._rootNode);
    }
    EXPECT_EQ(root->Name(), L"ROOT");
    ASSERT_NE(root->GetChild(2), nullptr);
    EXPECT_EQ(root->GetChild(2)->Name(), L"A");
}

/// A builder of the stack's own, whose end only its scope brings about.
class StackBuilder : public SceneBuilder {
public:
    explicit StackBuilder(int& deaths) : _deaths(deaths) {}
    ~StackBuilder() override { ++_deaths; }

private:
    int& _deaths;
};

TEST(AView3DAdapterTest, DestructorLeavesTheBuilders) {
    int deaths = 0;
    StackBuilder builder(deaths);
    {
        RecordingAdapter adapter;
        adapter._sceneBuilders.push_back(&builder);
    }
    EXPECT_EQ(deaths, 0);
}

// --- the view -----------------------------------------------------------------------------------

TEST(AView3DAdapterTest, SetView3DTellsTheViewItsAdapter) {
    RecordingAdapter adapter;
    CallLog log;
    RecordingView view(log);
    adapter.SetView3D(&view);
    EXPECT_THAT(log, ElementsAre("AttachView3DAdapter"));
    EXPECT_EQ(view.GetView3DAdapter(), &adapter);
}

TEST(AView3DAdapterTest, SetView3DKeepsNoPointerToTheView) {
    RecordingAdapter adapter;
    IView3D* const before = adapter.GetView3D();
    CallLog log;
    RecordingView view(log);
    adapter.SetView3D(&view);
    adapter.OpenTopNode();
    EXPECT_EQ(adapter.GetView3D(), before);
    EXPECT_THAT(adapter.log, ElementsAre("View.OpenTopNode"));  // the view that the host serves
    EXPECT_THAT(log, ElementsAre("AttachView3DAdapter"));
}

TEST(AView3DAdapterTest, SetView3DOfNullDoesNothing) {
    RecordingAdapter adapter;
    adapter.SetView3D(nullptr);
    EXPECT_THAT(adapter.log, IsEmpty());
    EXPECT_EQ(adapter.GetView3D()->GetView3DAdapter(), &adapter);
}

// --- construction and the stack of open nodes ---------------------------------------------------

TEST(AView3DAdapterTest, StartAndEndOfConstructionDoNothing) {
    PlainConstructionAdapter adapter;
    adapter.StartConstruction(nullptr);
    adapter.StartConstruction(adapter._rootNode);
    adapter.EndConstruction();
    EXPECT_THAT(adapter.log, IsEmpty());
    EXPECT_TRUE(adapter._openNodes.empty());
    EXPECT_FALSE(adapter._rootNode->HasChildren());
}

TEST(AView3DAdapterTest, OpenTopNodeIsTheViewsBusiness) {
    RecordingAdapter adapter;
    adapter.OpenTopNode();
    EXPECT_THAT(adapter.log, ElementsAre("View.OpenTopNode"));
    EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
}

TEST(AView3DAdapterTest, CloseTopNodeIsTheViewsBusiness) {
    RecordingAdapter adapter;
    adapter.openOnly(adapter._rootNode);
    adapter.CloseTopNode();
    EXPECT_THAT(adapter.log, ElementsAre("View.CloseTopNode"));
    EXPECT_EQ(adapter.GetCurrentOpenNode(), nullptr);
}

TEST(AView3DAdapterTest, CloseNodeAndOptimizeClosesOneNode) {
    RecordingAdapter adapter;
    adapter.openOnly(adapter._rootNode);
    adapter._openNodes.push(support::addGroup(adapter._rootNode, 2));
    adapter.CloseNodeAndOptimize();
    EXPECT_THAT(adapter.log, ElementsAre("CloseNode"));
    EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
}

TEST(AView3DAdapterTest, CurrentOpenNodeIsTheTopOfTheStack) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.GetCurrentOpenNode(), nullptr);
    adapter._openNodes.push(adapter._rootNode);
    EXPECT_EQ(adapter.GetCurrentOpenNode(), adapter._rootNode);
    GeoNode* const leaf = support::addLeaf(adapter._rootNode, 2);
    adapter._openNodes.push(leaf);
    EXPECT_EQ(adapter.GetCurrentOpenNode(), leaf);
    EXPECT_THAT(adapter.log, IsEmpty());
}

// --- what a host overrides as it needs ----------------------------------------------------------

TEST(AView3DAdapterTest, LibrariesAreAcceptedAndIgnored) {
    RecordingAdapter adapter;
    EXPECT_TRUE(adapter.OpenLibrary("screws"));
    EXPECT_TRUE(adapter.OpenLibrary(std::string()));
    EXPECT_TRUE(adapter.AddLibraryReference(5, "screws", 7));
    adapter.CloseLibrary();
    EXPECT_THAT(adapter.log, IsEmpty());
    EXPECT_FALSE(adapter._rootNode->HasChildren());
}

TEST(AView3DAdapterTest, PickVisualHitsNothing) {
    RecordingAdapter adapter;
    RenderId id = support::pathOf({1, 2});
    EXPECT_FALSE(adapter.PickVisual(Ray(), id));
    EXPECT_EQ(id, support::pathOf({1, 2}));
    EXPECT_THAT(adapter.log, IsEmpty());
}

TEST(AView3DAdapterTest, SceneGraphStructureIsTheViewsOwnText) {
    RecordingAdapter adapter;
    std::string text = "before, ";
    adapter.GetSceneGraphStructure(text, true);
    EXPECT_EQ(text, "before, the view's own text");
    text.clear();
    adapter.GetSceneGraphStructure(text, false);
    EXPECT_EQ(text, "the view's own text");
    EXPECT_THAT(adapter.log, ElementsAre("View.GetSceneGraphStructure(true)",
                                         "View.GetSceneGraphStructure(false)"));
}

// --- what it holds for the host -----------------------------------------------------------------

TEST(AView3DAdapterTest, AnswersItsFilterManager) {
    RecordingAdapter adapter;
    EXPECT_EQ(adapter.GetFilterManager(), nullptr);
    adapter._filterManager = new QuietFilterManager();
    EXPECT_EQ(adapter.GetFilterManager(), adapter._filterManager);
}

TEST(AView3DAdapterTest, KeepsTheTwoStrategiesApart) {
    QuietStrategy highlight;
    QuietStrategy hide;
    RecordingAdapter adapter;
    adapter.SetHighlightStrategy(&highlight);
    EXPECT_EQ(adapter.GetHighlightStrategy(), &highlight);
    EXPECT_EQ(adapter.GetHideStrategy(), nullptr);
    adapter.SetHideStrategy(&hide);
    EXPECT_EQ(adapter.GetHighlightStrategy(), &highlight);
    EXPECT_EQ(adapter.GetHideStrategy(), &hide);
    adapter.SetHighlightStrategy(nullptr);
    adapter.SetHideStrategy(nullptr);
    EXPECT_EQ(adapter.GetHighlightStrategy(), nullptr);
    EXPECT_EQ(adapter.GetHideStrategy(), nullptr);
}

TEST(AView3DAdapterTest, AnswersItsSelectionHolder) {
    const RecordingAdapter adapter;
    EXPECT_EQ(adapter.GetSelectionHolder(), adapter._selectionHolder);
}

}  // namespace
}  // namespace KesVizCore
