#include "core/OutOfMemory.h"
#include "scene/SceneHost.h"
#include "support/EmptyHost.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::CallLog;
using support::RecordingAdapter;

/// Keeps no log of attributes, so that all that is allocated is the library's.
class QuietAdapter : public RecordingAdapter {
public:
    void ApplyAttribute(Attribute* attribute) override {
        ++applications;
        last = attribute;
    }

    int applications = 0;
    Attribute* last = nullptr;  ///< left to the node or to the test
};

class SceneOutOfMemoryTest : public testing::Test {
protected:
    SceneOutOfMemoryTest() : builder(factory.MakeSceneBuilder(&adapter)) {
        adapter.openOnly(adapter._rootNode);
    }
    ~SceneOutOfMemoryTest() override { factory.DeleteSceneBuilder(builder); }

    const std::vector<Attribute*>& attributes() { return *adapter._rootNode->Attributes(); }

    /// Runs @p set with the allocation of its attribute failing.
    template <typename Set>
    void expectNullApplied(long failing, Set set) {
        const std::vector<Attribute*> before = attributes();
        const int applications = adapter.applications;
        adapter.last = reinterpret_cast<Attribute*>(&adapter);  // anything but null
        const long blocks = OutOfMemory::BlocksInUse();
        {
            OutOfMemory outOfMemory(failing);
            set();
        }
        EXPECT_EQ(OutOfMemory::BlocksInUse(), blocks) << "at allocation " << failing;
        EXPECT_EQ(adapter.applications, applications + 1) << "at allocation " << failing;
        EXPECT_EQ(adapter.last, nullptr) << "at allocation " << failing;
        EXPECT_EQ(attributes(), before) << "at allocation " << failing;
    }

    QuietAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder;
};

TEST_F(SceneOutOfMemoryTest, SetColorAppliesNullAndLeavesTheNode) {
    expectNullApplied(1, [this] { builder->SetColor(RGBAColor::Red(), true); });
    builder->SetColor(RGBAColor::Blue(), false);
    expectNullApplied(1, [this] { builder->SetColor(RGBAColor::Red(), true); });
}

TEST_F(SceneOutOfMemoryTest, SetLineStyleAppliesNullAndLeavesTheNode) {
    const std::string style(100, '-');  // too long to be kept without an allocation of its own
    for (const long failing : {1L, 2L}) {
        expectNullApplied(failing, [&] { builder->SetLineStyle(style, 1.0F); });
    }
    builder->SetLineStyle("dotted", 1.0F);
    expectNullApplied(1, [&] { builder->SetLineStyle(style, 1.0F); });
}

TEST_F(SceneOutOfMemoryTest, SetTransformationAppliesNull) {
    double matrix[16] = {};
    expectNullApplied(1, [&] { builder->SetTransformation(matrix); });
}

TEST_F(SceneOutOfMemoryTest, SetVisibilityAppliesNullAndAnswersTrue) {
    bool answer = false;
    expectNullApplied(1, [&] { answer = builder->SetVisibility(true); });
    EXPECT_TRUE(answer);
}

TEST_F(SceneOutOfMemoryTest, AnAttributeForWhichTheNodeHasNoRoomIsNotLost) {
    EXPECT_TRUE(attributes().empty());  // from now on the list is a vector
    const long blocks = OutOfMemory::BlocksInUse();
    bool thrown = false;
    {
        OutOfMemory outOfMemory(2);  // the attribute, then the node's list
        try {
            builder->SetColor(RGBAColor::Red(), true);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
    }
    EXPECT_TRUE(thrown);
    EXPECT_EQ(OutOfMemory::BlocksInUse(), blocks);
    EXPECT_EQ(adapter.applications, 0);
    EXPECT_TRUE(attributes().empty());
}

TEST_F(SceneOutOfMemoryTest, ABodyWhoseColorCannotBeMadeIsBegunAllTheSame) {
    builder->BodyBegin(7, L"");
    builder->BodyEnd();
    long allocations = 0;
    {
        OutOfMemory counting(0);
        builder->BodyBegin(7, L"");
        allocations = counting.Allocations();
    }
    builder->BodyEnd();
    bool begun = false;
    {
        OutOfMemory outOfMemory(allocations + 1);
        begun = builder->BodyBegin(7, L"", RGBAColor::Red());
    }
    EXPECT_TRUE(begun);
    EXPECT_EQ(adapter.applications, 1);
    EXPECT_EQ(adapter.last, nullptr);
    EXPECT_TRUE(adapter._openNodes.top()->Attributes()->empty());
}

TEST_F(SceneOutOfMemoryTest, GetCurrentRenderIdThrowsAndLeavesOutAlone) {
    const RenderId before({5, 6}, ViewTree);
    const long allocations = FailEachAllocation([&](long failing) {
        const long blocks = OutOfMemory::BlocksInUse();
        bool failed = false;
        bool thrown = false;
        {
            RenderId out = before;
            {
                OutOfMemory outOfMemory(failing);
                try {
                    builder->GetCurrentRenderId(out);
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
                failed = outOfMemory.HasFailed();
            }
            EXPECT_EQ(out == before, failed) << "at allocation " << failing;
        }
        EXPECT_EQ(thrown, failed) << "at allocation " << failing;
        EXPECT_EQ(OutOfMemory::BlocksInUse(), blocks) << "at allocation " << failing;
        return failed;
    });
    EXPECT_GE(allocations, 2);
}

TEST_F(SceneOutOfMemoryTest, BuildRenderIdThrowsAndLeavesOutAlone) {
    const RenderId before({5, 6}, ViewTree);
    const EntityId face(5, FaceType, 6);
    const long allocations = FailEachAllocation([&](long failing) {
        RenderId plain = before;
        RenderId typed = before;
        const OutOfMemory outOfMemory(failing);
        try {
            builder->BuildRenderId(plain, face, RGBAColor(), RGBAColor());
            builder->BuildRenderId(typed, BodyType, face, RGBAColor(), RGBAColor());
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(typed == before, outOfMemory.HasFailed()) << "at allocation " << failing;
        EXPECT_TRUE(plain == before || plain.Length() == 3) << "at allocation " << failing;
        return outOfMemory.HasFailed();
    });
    EXPECT_GE(allocations, 2);
}

TEST_F(SceneOutOfMemoryTest, BuildRenderIdAllocatesOnceAndNotAgainForAnIdWithRoom) {
    const auto allocationsOf = [](auto work) {
        const OutOfMemory counting(0);
        work();
        return counting.Allocations();
    };
    builder->ConstructionBegin();
    builder->SceneBegin(3, L"");
    builder->ContainerBegin(12, L"", SceneBuilder::AddressedContainer);
    const EntityId face(7, FaceType, 4);
    EntityId entity;
    RenderId out;
    EXPECT_EQ(allocationsOf([&] { builder->BuildRenderId(out, face, {}, {}); }), 1);
    EXPECT_EQ(allocationsOf([&] { builder->ExtractEntityId(out, entity); }), 0);
    for (const RenderId& before :
         {RenderId({5, 6}, ViewTree), RenderId({1, 2, 3, 4, 5, 6, 7, 8}, Unknown)}) {
        const long once = before.Length() < 6 ? 1 : 0;
        out = RenderId();  // gives its room back
        out = before;
        EXPECT_EQ(allocationsOf([&] { builder->BuildRenderId(out, ViewType, face, {}, {}); }),
                  once);
        EXPECT_EQ(out, RenderId({3, 12, 10010, 7, 10002, 4}, View3D));
        out.Clear();
        EXPECT_EQ(allocationsOf([&] { builder->BuildRenderId(out, face, {}, {}); }), 0);
        EXPECT_EQ(out, RenderId({3, 12, 7, 10002, 4}, View3D));
    }
    EXPECT_EQ(allocationsOf([&] { builder->GetContainerRenderId(); }), 1);
    builder->ConstructionEnd();
}

TEST_F(SceneOutOfMemoryTest, ABeginThatThrowsLeavesItsLevelClosed) {
    const auto expectClosed = [this](auto begin) {
        begin(*builder);  // its node is there from now on
        builder->BodyEnd();
        const long allocations = FailEachAllocation([&](long failing) {
            SceneBuilder* fresh = factory.MakeSceneBuilder(&adapter);
            const std::size_t open = adapter._openNodes.size();
            bool begun = false;
            bool failed = false;
            {
                const OutOfMemory outOfMemory(failing);
                try {
                    begun = begin(*fresh);
                } catch (const std::bad_alloc&) {
                }
                failed = outOfMemory.HasFailed();
            }
            EXPECT_EQ(adapter._openNodes.size(), begun ? open + 1 : open) << failing;
            EXPECT_TRUE(begun || fresh->GetContainerRenderId().IsEmpty()) << failing;
            if (begun) {
                fresh->BodyEnd();
            }
            factory.DeleteSceneBuilder(fresh);
            return failed;
        });
        EXPECT_GE(allocations, 1);
    };
    expectClosed([](SceneBuilder& fresh) { return fresh.SceneBegin(2, L""); });
    expectClosed([](SceneBuilder& fresh) {
        return fresh.ContainerBegin(7, L"", SceneBuilder::AddressedContainer);
    });
    expectClosed([](SceneBuilder& fresh) { return fresh.BodyBegin(8, L"", RGBAColor::Red()); });
    expectClosed([](SceneBuilder& fresh) { return fresh.EntityBegin(9, L"", RGBAColor::Red()); });
}

/// Runs out of memory where the builder hands it an attribute or a filter id, and where the root
/// is to be opened.
class ExhaustedAdapter : public RecordingAdapter {
public:
    void ApplyAttribute(Attribute*) override { throw std::bad_alloc(); }
    void SetFilterId(const int&) override { throw std::bad_alloc(); }
    void OpenTopNode() override { throw std::bad_alloc(); }
};

TEST(ExhaustedAdapterTest, WhatWasBegunIsEndedAgain) {
    ExhaustedAdapter adapter;
    SceneBuilderFactory factory;
    SceneBuilder* builder = factory.MakeSceneBuilder(&adapter);
    EXPECT_THROW(builder->ConstructionBegin(), std::bad_alloc);
    EXPECT_EQ(adapter.takeLog(), (CallLog{"StartConstruction(null)", "EndConstruction"}));
    adapter.openOnly(adapter._rootNode);
    EXPECT_THROW(builder->BodyBegin(5, L"", RGBAColor::Red()), std::bad_alloc);
    EXPECT_THROW(builder->EntityBegin(6, L"", RGBAColor::Red()), std::bad_alloc);
    EXPECT_THROW(builder->EntityTypeBegin(FaceType, L""), std::bad_alloc);
    EXPECT_EQ(adapter._openNodes.size(), 1U);
    factory.DeleteSceneBuilder(builder);
}

/// Opens the table of signed ids.
class SigningRenderer : public support::EmptyRenderer {
public:
    using ARenderer::addSignedId;
    using ARenderer::getSignedId;
};

TEST(SignedIdOutOfMemoryTest, ANumberThatCouldNotBeListedIsNotHandedOutTwice) {
    const std::uint64_t negative = std::uint64_t{1} << 63U | 6U;  // asks for the number 5
    const long allocations = FailEachAllocation([&](long failing) {
        const SigningRenderer renderer;  // forgets all numbers when it dies
        bool failed = false;
        {
            const OutOfMemory outOfMemory(failing);
            try {
                SigningRenderer::getSignedId(5);
            } catch (const std::bad_alloc&) {
            }
            failed = outOfMemory.HasFailed();
        }
        const std::uint64_t other = SigningRenderer::getSignedId(negative);
        const std::uint64_t own = SigningRenderer::getSignedId(5);
        EXPECT_EQ(own, 5U) << "at allocation " << failing;
        EXPECT_TRUE(other != own || failed) << "at allocation " << failing;
        return failed;
    });
    EXPECT_GE(allocations, 2);
}

/// An id that gets the number 5 where that is free, and the highest otherwise.
std::uint64_t whereFiveIsWanted() {
    return SigningRenderer::getSignedId(std::uint64_t{1} << 63U | 6U);
}

/// Fails each allocation of @p add in turn: it throws, and @p ask then answers @p before, as if
/// @p add had never been called, and another number where nothing failed.
template <typename Prepare, typename Add, typename Ask>
void expectNumbersKept(Prepare prepare, Add add, Ask ask, std::uint64_t before) {
    const long allocations = FailEachAllocation([&](long failing) {
        const SigningRenderer renderer;
        prepare();
        bool failed = false;
        bool thrown = false;
        {
            const OutOfMemory outOfMemory(failing);
            try {
                add();
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(thrown, failed) << "at allocation " << failing;
        EXPECT_EQ(ask() == before, failed) << "at allocation " << failing;
        return failed;
    });
    EXPECT_GE(allocations, 2);
}

TEST(SignedIdOutOfMemoryTest, ANumberThatCouldNotBeListedIsFree) {
    const auto add = [] { SigningRenderer::addSignedId(1, 5); };
    expectNumbersKept([] {}, add, whereFiveIsWanted, 5);
    expectNumbersKept([] {}, add, [] { return SigningRenderer::getSignedId(1); }, 1);
}

TEST(SignedIdOutOfMemoryTest, ANumberStaysTakenWhereNoneCouldTakeItsPlace) {
    expectNumbersKept([] { SigningRenderer::addSignedId(1, 5); },
                      [] { SigningRenderer::addSignedId(1, 6); }, whereFiveIsWanted,
                      std::numeric_limits<std::int64_t>::max());
}

TEST(SignedIdOutOfMemoryTest, TheSameNumberAgainNeedsNoMemory) {
    const SigningRenderer renderer;
    SigningRenderer::addSignedId(1, 5);
    long allocations = -1;
    {
        const OutOfMemory counting(0);
        SigningRenderer::addSignedId(1, 5);
        allocations = counting.Allocations();
    }
    EXPECT_EQ(allocations, 0);
}

TEST(SignedIdOutOfMemoryTest, ANumberThatCouldNotBeSharedIsFreeWithoutItsFirstId) {
    const auto afterItsFirst = [] {
        SigningRenderer::addSignedId(1, 6);
        return whereFiveIsWanted();
    };
    expectNumbersKept([] { SigningRenderer::addSignedId(1, 5); },
                      [] { SigningRenderer::addSignedId(2, 5); }, afterItsFirst, 5);
}

TEST(SceneBuilderFactoryOutOfMemoryTest, MakeSceneBuilderAnswersNullAndListsNothing) {
    SceneBuilderFactory factory;
    const long allocations = FailEachAllocation([&](long failing) {
        RecordingAdapter adapter;
        const long blocks = OutOfMemory::BlocksInUse();
        SceneBuilder* builder = nullptr;
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            builder = factory.MakeSceneBuilder(&adapter);
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(builder == nullptr, failed) << "at allocation " << failing;
        if (failed) {
            EXPECT_EQ(OutOfMemory::BlocksInUse(), blocks) << "at allocation " << failing;
            EXPECT_TRUE(adapter._sceneBuilders.empty()) << "at allocation " << failing;
        }
        factory.DeleteSceneBuilder(builder);
        return failed;
    });
    EXPECT_EQ(allocations, 2);  // the builder, then its place in the adapter's list
}

TEST(SceneBuilderFactoryOutOfMemoryTest, MakeSceneBuilderWithoutAnAdapterAnswersNull) {
    SceneBuilderFactory factory;
    SceneBuilder* builder = nullptr;
    {
        OutOfMemory outOfMemory(1);
        builder = factory.MakeSceneBuilder(nullptr);
    }
    EXPECT_EQ(builder, nullptr);
}

}  // namespace
}  // namespace KesVizCore
