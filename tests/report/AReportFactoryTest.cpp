#include <KesVizCore/report/AReport.h>
#include <KesVizCore/report/AReportFactory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

/// Writes down the name of each factory that is destroyed.
class LoggedFactory : public AReportFactory {
public:
    LoggedFactory(const std::string& name, std::vector<std::string>& log)
        : AReportFactory(name), _log(log) {}
    ~LoggedFactory() override { _log.push_back(GetName()); }
    AReport* MakeReport() override { return nullptr; }

private:
    std::vector<std::string>& _log;
};

const AReportFactory* const activeAtLoad = AReportFactory::GetActiveReportFactory();

class AReportFactoryTest : public testing::Test {
protected:
    void TearDown() override { AReportFactory::SetActiveReportFactory(nullptr); }

    std::vector<std::string> _destroyed;
};

TEST_F(AReportFactoryTest, IsAbstract) {
    EXPECT_TRUE(std::is_abstract_v<AReportFactory>);
    EXPECT_TRUE(std::has_virtual_destructor_v<AReportFactory>);
}

TEST_F(AReportFactoryTest, MakeReportStandsInTheFirstSlot) {
    // Where the processor's C++ ABI is the Itanium one, a pointer to a virtual member holds the
    // distance of its slot from the first; an odd 1 may mark it as virtual.
    AReport* (AReportFactory::*const member)() = &AReportFactory::MakeReport;
    std::uintptr_t distance = 0;
    std::memcpy(&distance, &member, sizeof distance);
    EXPECT_EQ(distance & ~std::uintptr_t{1}, 0U);
}

TEST_F(AReportFactoryTest, HasTheNameGivenByTheDerivedClass) {
    const LoggedFactory factory("plain text", _destroyed);
    EXPECT_EQ(factory.GetName(), "plain text");
}

TEST_F(AReportFactoryTest, NoFactoryIsActiveAtTheStart) {
    EXPECT_EQ(activeAtLoad, nullptr);
}

TEST_F(AReportFactoryTest, FactoryThatWasSetIsActive) {
    auto* const factory = new LoggedFactory("first", _destroyed);
    AReportFactory::SetActiveReportFactory(factory);
    EXPECT_EQ(AReportFactory::GetActiveReportFactory(), factory);
    EXPECT_TRUE(_destroyed.empty());
}

TEST_F(AReportFactoryTest, SettingAnotherDestroysTheOneBefore) {
    auto* const second = new LoggedFactory("second", _destroyed);
    AReportFactory::SetActiveReportFactory(new LoggedFactory("first", _destroyed));
    AReportFactory::SetActiveReportFactory(second);
    EXPECT_EQ(AReportFactory::GetActiveReportFactory(), second);
    EXPECT_EQ(_destroyed, std::vector<std::string>{"first"});
}

TEST_F(AReportFactoryTest, SettingNullDestroysTheOneBeforeAndLeavesNone) {
    AReportFactory::SetActiveReportFactory(new LoggedFactory("first", _destroyed));
    AReportFactory::SetActiveReportFactory(nullptr);
    EXPECT_EQ(AReportFactory::GetActiveReportFactory(), nullptr);
    EXPECT_EQ(_destroyed, std::vector<std::string>{"first"});
}

TEST_F(AReportFactoryTest, SettingNullWithoutAnActiveFactoryChangesNothing) {
    AReportFactory::SetActiveReportFactory(nullptr);
    EXPECT_EQ(AReportFactory::GetActiveReportFactory(), nullptr);
}

TEST_F(AReportFactoryTest, SettingTheActiveFactoryAgainDestroysIt) {
    // The library then holds a dangling pointer, which this test gets rid of without touching
    // it: the factory stands in storage that outlives it, and a new one is made there.
    alignas(LoggedFactory) static unsigned char storage[sizeof(LoggedFactory)];
    struct Placed : LoggedFactory {
        using LoggedFactory::LoggedFactory;
        static void* operator new(std::size_t) { return storage; }
        static void operator delete(void*) {}
    };
    auto* const factory = new Placed("same", _destroyed);
    AReportFactory::SetActiveReportFactory(factory);
    AReportFactory::SetActiveReportFactory(factory);
    EXPECT_EQ(_destroyed, std::vector<std::string>{"same"});
    EXPECT_EQ(AReportFactory::GetActiveReportFactory(), factory);
    new Placed("made again", _destroyed);
    AReportFactory::SetActiveReportFactory(nullptr);
    EXPECT_EQ(_destroyed, (std::vector<std::string>{"same", "made again"}));
}

}  // namespace
}  // namespace KesVizCore
