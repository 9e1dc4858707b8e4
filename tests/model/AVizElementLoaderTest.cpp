#include "model/ModelTestKit.h"

#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/model/AVizElementLoader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::CaptureLoader;
using support::EdgeLoader;
using support::EveryLoader;
using support::FaceLoader;
using support::load;
using support::loadEdge;
using support::loadFace;
using support::MeshLoader;
using support::PMILoader;
using support::PointSetLoader;
using support::PointsLoader;
using support::PolygonLoader;
using support::PolygonLoopLoader;
using support::TextLoader;
using support::ViewLoader;
using support::WireLoader;

constexpr std::uint64_t kNoId = std::numeric_limits<std::uint64_t>::max();

/// A host's loader that answers what it is given, again and again.
class AnsweringLoader : public AVizElementLoader {
public:
    explicit AnsweringLoader(VizElement* answer) : _answer(answer) {}
    VizElement* makeOne() override { return nullptr; }
    VizElement* createAndFill() override {
        ++created;
        return _answer;
    }
    int created = 0;

private:
    VizElement* _answer;
};

/// A host's loader whose placement is the identity, but for what a test makes of it.
class PlacedLoader : public EdgeLoader {
public:
    PlacedLoader() {
        for (int place = 0; place < 4; ++place) {
            _transformation[place][place] = 1.0F;
        }
    }
};

std::uint64_t nextId() {
    return loadEdge()->GetID() + 1;
}

TEST(AVizElementLoaderTest, IsAbstractInEveryKind) {
    static_assert(std::is_abstract_v<AVizElementLoader>);
    static_assert(std::has_virtual_destructor_v<AVizElementLoader>);
    static_assert(std::is_abstract_v<AVizEdgeLoader> && std::is_abstract_v<AVizFaceLoader>);
    static_assert(std::is_abstract_v<AVizPolygonLoader>);
    static_assert(std::is_abstract_v<AVizPolygonLoopLoader>);
    static_assert(std::is_abstract_v<AVizPointsLoader> && std::is_abstract_v<AVizMeshLoader>);
    static_assert(std::is_abstract_v<AVizWireLoader> && std::is_abstract_v<AVizPointSetLoader>);
    static_assert(std::is_abstract_v<AVizTextLoader> && std::is_abstract_v<AVizViewLoader>);
    static_assert(std::is_abstract_v<AVizCaptureLoader> && std::is_abstract_v<AVizPMILoader>);
}

TEST(AVizElementLoaderTest, LoadIsNotVirtual) {
    // A host's Load of its own does not stand in for the library's.
    class HidingLoader : public AnsweringLoader {
    public:
        using AnsweringLoader::AnsweringLoader;
        VizElement* Load() { return nullptr; }
    };
    const auto edge = loadEdge();
    HidingLoader loader(edge.get());
    AVizElementLoader& base = loader;
    EXPECT_EQ(base.Load(), edge.get());
}

TEST(AVizElementLoaderTest, LoadAnswersWhatTheHostCreates) {
    const auto edge = loadEdge();
    AnsweringLoader loader(edge.get());
    EXPECT_EQ(loader.Load(), edge.get());
    EXPECT_EQ(loader.created, 1);
}

TEST(AVizElementLoaderTest, LoadStampsTheNextId) {
    const std::uint64_t expected = nextId();
    EXPECT_EQ(loadEdge()->GetID(), expected);
    EXPECT_EQ(loadEdge()->GetID(), expected + 1);
}

TEST(AVizElementLoaderTest, LoadStampsAfterTheHostHasFilled) {
    std::uint64_t whileFilling = 0;
    const auto edge = loadEdge([&](VizEdge& made) { whileFilling = made.GetID(); });
    EXPECT_EQ(whileFilling, kNoId);
    EXPECT_NE(edge->GetID(), kNoId);
}

TEST(AVizElementLoaderTest, IdsThatAreTakenWhileFillingComeFirst) {
    std::uint64_t inner = 0;
    const std::uint64_t expected = nextId();
    const auto outer = loadEdge([&](VizEdge&) { inner = loadFace()->GetID(); });
    EXPECT_EQ(inner, expected);
    EXPECT_EQ(outer->GetID(), expected + 1);
}

TEST(AVizElementLoaderTest, LoadStampsAnElementThatHasAnIdAlready) {
    const auto edge = loadEdge();
    AnsweringLoader loader(edge.get());
    const std::uint64_t expected = edge->GetID() + 1;
    loader.Load();
    EXPECT_EQ(edge->GetID(), expected);
}

TEST(AVizElementLoaderTest, LoadAnswersNullAndUsesNoIdWhenTheHostAnswersNull) {
    const std::uint64_t expected = nextId();
    AnsweringLoader loader(nullptr);
    EXPECT_EQ(loader.Load(), nullptr);
    EXPECT_EQ(loader.Load(), nullptr);
    EXPECT_EQ(loadEdge()->GetID(), expected);
}

TEST(AVizElementLoaderTest, IdsAreOneSequenceForAllKinds) {
    std::vector<std::uint64_t> ids;
    const std::uint64_t first = nextId();
    ids.push_back(load<EdgeLoader>()->GetID());
    ids.push_back(load<FaceLoader>()->GetID());
    ids.push_back(load<PolygonLoader>()->GetID());
    ids.push_back(load<PolygonLoopLoader>()->GetID());
    ids.push_back(load<PointsLoader>()->GetID());
    ids.push_back(load<MeshLoader>()->GetID());
    ids.push_back(load<WireLoader>()->GetID());
    ids.push_back(load<PointSetLoader>()->GetID());
    ids.push_back(load<TextLoader>()->GetID());
    ids.push_back(load<ViewLoader>()->GetID());
    ids.push_back(load<CaptureLoader>()->GetID());
    ids.push_back(load<PMILoader>()->GetID());
    for (std::size_t place = 0; place < ids.size(); ++place) {
        EXPECT_EQ(ids[place], first + place);
    }
}

TEST(AVizElementLoaderTest, OneLoaderLoadsAnyNumber) {
    EdgeLoader loader;
    const std::uint64_t first = nextId();
    for (std::uint64_t count = 0; count < 100; ++count) {
        const std::unique_ptr<VizEdge> edge(static_cast<VizEdge*>(loader.Load()));
        EXPECT_EQ(edge->GetID(), first + count);
    }
}

/// Run in a process of its own: leaves with 0 where the ids are 1 and 2.
[[noreturn]] void leaveByTheFirstIds() {
    AnsweringLoader nothing(nullptr);
    nothing.Load();
    const bool expected = loadEdge()->GetID() == 1 && loadFace()->GetID() == 2;
    std::exit(expected ? 0 : 1);
}

TEST(AVizElementLoaderDeathTest, TheFirstIdsOfAProcessAreOneAndTwo) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a new process, not a fork of this one
    EXPECT_EXIT(leaveByTheFirstIds(), ::testing::ExitedWithCode(0), "");
}

TEST(AVizElementLoaderTest, GetNextIDGoesOnWithTheSequence) {
    EdgeLoader loader;
    const int first = loader.getNextID();
    EXPECT_EQ(loader.getNextID(), first + 1);
    FaceLoader other;
    EXPECT_EQ(other.getNextID(), first + 2);
    EXPECT_EQ(loadEdge()->GetID(), static_cast<std::uint64_t>(first) + 3);
    static_assert(std::is_same_v<decltype(loader.getNextID()), int>);
}

TEST(AVizElementLoaderTest, IsIdentityTranformationIsFalseUntilThePlacementIsFilled) {
    EdgeLoader loader;
    EXPECT_FALSE(loader.IsIdentityTranformation());
}

TEST(AVizElementLoaderTest, IsIdentityTranformationOfTheIdentity) {
    PlacedLoader loader;
    EXPECT_TRUE(loader.IsIdentityTranformation());
}

TEST(AVizElementLoaderTest, IsIdentityTranformationAllowsNegativeZeros) {
    PlacedLoader loader;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (row != column) {
                loader._transformation[row][column] = -0.0F;
            }
        }
    }
    EXPECT_TRUE(loader.IsIdentityTranformation());
}

TEST(AVizElementLoaderTest, IsIdentityTranformationIsFalseWhereAnyEntryDiffersByAnything) {
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            const float entry = row == column ? 1.0F : 0.0F;
            for (const float other :
                 {justAbove(entry), justBelow(entry), 1.0F - entry, -1.0F, kNaN, kInfinity}) {
                SCOPED_TRACE("row " + std::to_string(row) + ", column " + std::to_string(column) +
                             ": " + std::to_string(other));
                PlacedLoader loader;
                loader._transformation[row][column] = other;
                EXPECT_FALSE(loader.IsIdentityTranformation());
            }
        }
    }
}

TEST(AVizElementLoaderTest, IsIdentityTranformationLooksAtItsSixteenNumbersAlone) {
    class GuardedLoader : public AVizElementLoader {
    public:
        GuardedLoader() {
            for (int place = 0; place < 4; ++place) {
                _transformation[place][place] = 1.0F;
            }
        }
        using AVizElementLoader::IsIdentityTranformation;
        VizElement* makeOne() override { return nullptr; }
        VizElement* createAndFill() override { return nullptr; }
        float behind[4] = {9.0F, 9.0F, 9.0F, 9.0F};
    };
    GuardedLoader loader;
    EXPECT_TRUE(loader.IsIdentityTranformation());
}

TEST(AVizElementLoaderTest, IsIdentityTranformationHasNoTolerance) {
    PlacedLoader loader;
    loader._transformation[2][2] = 0.9999999F;
    EXPECT_FALSE(loader.IsIdentityTranformation());
}

TEST(AVizElementLoaderTest, CopiesCopyThePlacement) {
    EdgeLoader loader;
    float number = 1.0F;
    for (auto& row : loader._transformation) {
        for (float& entry : row) {
            entry = number++;
        }
    }
    const EdgeLoader copy(loader);
    EdgeLoader assigned;
    assigned = loader;
    EdgeLoader moved(std::move(assigned));
    number = 1.0F;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column, ++number) {
            EXPECT_EQ(copy._transformation[row][column], number);
            EXPECT_EQ(moved._transformation[row][column], number);
        }
    }
    loader._transformation[0][0] = 99.0F;
    EXPECT_EQ(copy._transformation[0][0], 1.0F);
}

// --- what holds for every kind -------------------------------------------------------------------

template <typename Loader>
class EveryLoaderTest : public ::testing::Test {};

TYPED_TEST_SUITE(EveryLoaderTest, EveryLoader);

TYPED_TEST(EveryLoaderTest, MakesAnElementOfItsKind) {
    using Kind = typename TypeParam::Made;
    TypeParam loader;
    VizElement* const made = loader.makeOne();
    const std::unique_ptr<Kind> element(dynamic_cast<Kind*>(made));
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->GetElementType(), Kind::TypeID());
}

TYPED_TEST(EveryLoaderTest, MakesAnotherElementEachTime) {
    const auto one = load<TypeParam>();
    const auto other = load<TypeParam>();
    EXPECT_NE(one.get(), other.get());
}

TYPED_TEST(EveryLoaderTest, MakesWithoutUsingAnId) {
    const std::uint64_t expected = nextId();
    TypeParam loader;
    const std::unique_ptr<typename TypeParam::Made> element(
        static_cast<typename TypeParam::Made*>(loader.makeOne()));
    EXPECT_EQ(element->GetID(), kNoId);
    EXPECT_EQ(loadEdge()->GetID(), expected);
}

TYPED_TEST(EveryLoaderTest, CanBeCopiedAndMoved) {
    static_assert(std::is_copy_constructible_v<TypeParam> && std::is_copy_assignable_v<TypeParam>);
    static_assert(std::is_move_constructible_v<TypeParam> && std::is_move_assignable_v<TypeParam>);
    TypeParam loader;
    loader._transformation[3][0] = 5.0F;
    TypeParam copy(loader);
    TypeParam moved(std::move(copy));
    copy = moved;
    loader = std::move(moved);
    EXPECT_EQ(copy._transformation[3][0], 5.0F);
    EXPECT_EQ(loader._transformation[3][0], 5.0F);
    const std::unique_ptr<typename TypeParam::Made> element(
        static_cast<typename TypeParam::Made*>(copy.makeOne()));
    EXPECT_NE(element, nullptr);
}

TEST(AVizElementLoaderTest, TheCaptureLoaderMakesACapture) {
    static_assert(std::is_same_v<decltype(std::declval<CaptureLoader&>().makeOne()), VizCapture*>);
    static_assert(std::is_same_v<decltype(std::declval<ViewLoader&>().makeOne()), VizElement*>);
}

}  // namespace
}  // namespace KesVizCore
