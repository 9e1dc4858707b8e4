// The small interfaces that the adapter and the view hold for their host.

#include "view/ViewTestKit.h"

#include <KesVizCore/view/AFilterManager.h>
#include <KesVizCore/view/ATextManager.h>
#include <KesVizCore/view/IRayPickListener.h>
#include <KesVizCore/view/ITextManagerProvider.h>
#include <KesVizCore/view/IViewDoUndoStrategy.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::pathOf;
using testing::ElementsAre;

/// What every one of these interfaces has: hosts derive from it and may destroy it through it.
template <typename Interface>
void expectAbstractWithVirtualDestructor() {
    EXPECT_TRUE(std::is_abstract_v<Interface>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Interface>);
}

// --- IViewDoUndoStrategy ------------------------------------------------------------------------

class LoggingStrategy : public IViewDoUndoStrategy {
public:
    explicit LoggingStrategy(CallLog& log) : _log(log) {}
    ~LoggingStrategy() override { _log.push_back("destroyed"); }
    bool Apply(const RenderId& id) override { return logged("Apply", id); }
    bool Undo(const RenderId& id) override { return logged("Undo", id); }
    void UndoAll() override { _log.push_back("UndoAll"); }
    bool IsApplied(const RenderId& id) override { return logged("IsApplied", id); }

private:
    bool logged(const char* operation, const RenderId& id) {
        _log.push_back(operation + id.ToString());
        return true;
    }
    CallLog& _log;
};

TEST(ViewDoUndoStrategyTest, IsTheHostsToComplete) {
    expectAbstractWithVirtualDestructor<IViewDoUndoStrategy>();
}

TEST(ViewDoUndoStrategyTest, EveryOperationReachesTheHost) {
    CallLog log;
    std::unique_ptr<IViewDoUndoStrategy> strategy = std::make_unique<LoggingStrategy>(log);
    EXPECT_TRUE(strategy->Apply(pathOf({1})));
    EXPECT_TRUE(strategy->Undo(pathOf({2})));
    strategy->UndoAll();
    EXPECT_TRUE(strategy->IsApplied(pathOf({3})));
    strategy.reset();
    EXPECT_THAT(log, ElementsAre("Apply[ 1 View3D ]", "Undo[ 2 View3D ]", "UndoAll",
                                 "IsApplied[ 3 View3D ]", "destroyed"));
}

// --- AFilterManager -----------------------------------------------------------------------------

class LoggingFilterManager : public AFilterManager {
public:
    explicit LoggingFilterManager(CallLog& log) : _log(log) {}
    ~LoggingFilterManager() override { _log.push_back("destroyed"); }
    void SetVisible(int filterId, bool visible) override {
        _log.push_back((visible ? "show " : "hide ") + std::to_string(filterId));
    }
    bool IsVisible(int filterId) const override { return filterId == 10002; }
    void Reset() override { _log.push_back("Reset"); }

private:
    CallLog& _log;
};

TEST(FilterManagerTest, IsTheHostsToComplete) {
    expectAbstractWithVirtualDestructor<AFilterManager>();
}

TEST(FilterManagerTest, EveryOperationReachesTheHost) {
    CallLog log;
    std::unique_ptr<AFilterManager> manager = std::make_unique<LoggingFilterManager>(log);
    manager->SetVisible(10002, false);
    manager->SetVisible(-1, true);
    EXPECT_TRUE(manager->IsVisible(10002));
    EXPECT_FALSE(manager->IsVisible(10003));
    manager->Reset();
    manager.reset();
    EXPECT_THAT(log, ElementsAre("hide 10002", "show -1", "Reset", "destroyed"));
}

// --- IRayPickListener ---------------------------------------------------------------------------

TEST(RayPickListenerTest, IsTheHostsToComplete) {
    expectAbstractWithVirtualDestructor<IRayPickListener>();
}

// --- text managers ------------------------------------------------------------------------------

/// True of a class that is made, copied and moved in every way.
template <typename Value>
constexpr bool isPlainValue = std::is_default_constructible_v<Value>&&
    std::is_copy_constructible_v<Value>&& std::is_move_constructible_v<Value>&&
        std::is_copy_assignable_v<Value>&& std::is_move_assignable_v<Value>;

TEST(TextManagerTest, IsEmptyAndWithoutVirtuals) {
    EXPECT_TRUE(std::is_empty_v<ATextManager>);
    EXPECT_FALSE(std::is_polymorphic_v<ATextManager>);
}

TEST(TextManagerTest, IsMadeCopiedAndMovedFreely) {
    EXPECT_TRUE(isPlainValue<ATextManager>);
    ATextManager first;
    ATextManager second(first);
    const ATextManager third(std::move(first));
    second = third;
    first = std::move(second);
}

TEST(TextManagerProviderTest, HoldsNothingButItsDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<ITextManagerProvider>);
    EXPECT_FALSE(std::is_abstract_v<ITextManagerProvider>);
    EXPECT_EQ(sizeof(ITextManagerProvider), sizeof(void*));
}

TEST(TextManagerProviderTest, IsMadeCopiedAndMovedFreely) {
    EXPECT_TRUE(isPlainValue<ITextManagerProvider>);
    ITextManagerProvider first;
    ITextManagerProvider second(first);
    const ITextManagerProvider third(std::move(first));
    second = third;
    first = std::move(second);
}

TEST(TextManagerProviderTest, HostsOwnIsDestroyedThroughIt) {
    struct Provider : ITextManagerProvider {
        explicit Provider(int& deaths) : _deaths(deaths) {}
        ~Provider() override { ++_deaths; }
        int& _deaths;
    };
    int deaths = 0;
    std::unique_ptr<ITextManagerProvider> provider = std::make_unique<Provider>(deaths);
    provider.reset();
    EXPECT_EQ(deaths, 1);
}

}  // namespace
}  // namespace KesVizCore
