#include "core/OutOfMemory.h"
#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/pmi/VizPMICollection.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Box;
using support::grown;
using support::grownExtremaOf;
using support::Model;
using support::OpenCollection;

using Names = std::vector<std::wstring>;

/// Longer than any text that a string keeps in itself.
const std::string kLong(100, 'x');
const std::wstring kLongId(100, L'x');

const Box kBox{0, 0, 0, 20, 20, 20};
constexpr support::Triple kX{1, 0, 0};
constexpr support::Triple kY{0, 1, 0};

// --- making -------------------------------------------------------------------------------------

TEST(PMIOutOfMemoryTest, MakeOneAnswersNull) {
    support::PMILoader loader;
    loader.setGroupAndType({1, kLong, 2}, {3, kLong, 4});
    const long allocations = FailEachAllocation([&](long failing) {
        const long before = OutOfMemory::BlocksInUse();
        VizElement* made = nullptr;
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            made = loader.makeOne();
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(made == nullptr, failed) << "at allocation " << failing;
        delete static_cast<VizPMI*>(made);
        EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
        return failed;
    });
    EXPECT_EQ(allocations, 3);  // the annotation and two names
}

// --- the matrix ---------------------------------------------------------------------------------

template <typename Real>
void expectNoMatrixWithoutMemory() {
    VizPMIContainer container(1);
    const std::vector<Real> matrix(16, Real{2});
    {
        OutOfMemory outOfMemory(1);
        container.SetMatrix(matrix.data(), 16);
    }
    EXPECT_EQ(container.GetMatrix(), nullptr);
    container.SetMatrix(matrix.data(), 16);
    ASSERT_NE(container.GetMatrix(), nullptr);
    EXPECT_EQ(container.GetMatrix()[15], 2.0);
}

TEST(PMIOutOfMemoryTest, SetMatrixDoesNothing) {
    expectNoMatrixWithoutMemory<double>();
    expectNoMatrixWithoutMemory<float>();
}

TEST(PMIOutOfMemoryTest, AMatrixThatIsThereNeedsNoMemory) {
    VizPMIContainer container(1);
    const std::vector<double> matrix(16, 2.0);
    container.SetMatrix(matrix.data(), 4);
    long allocations = -1;
    {
        OutOfMemory outOfMemory(0);
        container.SetMatrix(matrix.data(), 16);
        allocations = outOfMemory.Allocations();
    }
    EXPECT_EQ(allocations, 0);
}

TEST(PMIOutOfMemoryTest, AContainerGivesBackAllItsMemory) {
    const long before = OutOfMemory::BlocksInUse();
    {
        VizPMIContainer container(1);
        for (const wchar_t* id : {L"a", L"b"}) {
            container.AddVizPMI(support::pmiNamed(id + kLongId).release());
            auto record = std::make_unique<SemanticPMI>();
            record->Id = id + kLongId;
            container.AddSemanticPMI(record.release());
        }
        container.SetMatrix(static_cast<const double*>(nullptr), 0);
        container.DeletePMI(L"a" + kLongId);
    }
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

// --- adding -------------------------------------------------------------------------------------

TEST(PMIOutOfMemoryTest, AnAnnotationIsInListAndMapOrInNeither) {
    const long allocations = FailEachAllocation([](long failing) {
        VizPMIContainer container(1);
        std::unique_ptr<VizPMI> pmi = support::pmiNamed(kLongId);
        bool added = false;
        {
            const OutOfMemory outOfMemory(failing);
            try {
                container.AddVizPMI(pmi.get());
                added = true;
            } catch (const std::bad_alloc&) {
            }
        }
        EXPECT_EQ(container.GetVizPMIs().size(), added ? 1U : 0U) << failing;
        EXPECT_EQ(container.GetVizPMIMap().size(), added ? 1U : 0U) << failing;
        if (added) {
            static_cast<void>(pmi.release());
        }
        return !added;
    });
    EXPECT_GE(allocations, 3);  // the id, the list and the map
}

TEST(PMIOutOfMemoryTest, ANameIsInTheListOfMembersAndInItsIndexOrInNeither) {
    const auto element = support::loadMesh();
    element->SetVisualID(kLongId);
    const long allocations = FailEachAllocation([&](long failing) {
        OpenCollection collection;
        std::wstring name = kLongId;
        bool added = false;
        {
            const OutOfMemory outOfMemory(failing);
            try {
                collection.AddMember(std::move(name));
                added = true;
            } catch (const std::bad_alloc&) {
            }
        }
        EXPECT_EQ(collection.GetMemberCount(), added ? 1 : 0) << failing;
        EXPECT_EQ(collection.IsMember(*element), added) << failing;
        return !added;
    });
    EXPECT_GE(allocations, 3);  // the list, the name and the index
}

TEST(PMIOutOfMemoryTest, MembersAndTheirIndexAreAssignedTogether) {
    const auto before = support::loadMesh();
    const auto after = support::loadMesh();
    before->SetVisualID(L"before" + kLongId);
    after->SetVisualID(L"after" + kLongId);
    OpenCollection other;
    other.AddMember(after->GetVisualID());
    const long allocations = FailEachAllocation([&](long failing) {
        OpenCollection collection;
        collection.AddMember(before->GetVisualID());
        bool assigned = false;
        {
            const OutOfMemory outOfMemory(failing);
            try {
                collection = other;
                assigned = true;
            } catch (const std::bad_alloc&) {
            }
        }
        const Names& members = collection.GetMemberList();
        EXPECT_EQ(members.size(), 1U) << failing;
        EXPECT_EQ(collection.IsMember(*before), members.at(0) == before->GetVisualID()) << failing;
        EXPECT_EQ(collection.IsMember(*after), members.at(0) == after->GetVisualID()) << failing;
        EXPECT_EQ(collection.IsMember(*after), assigned) << failing;
        return !assigned;
    });
    EXPECT_GE(allocations, 5);  // the list and the index with a name each
}

TEST(PMIOutOfMemoryTest, ATextThatIsNotAddedLeavesTheExtrema) {
    const std::unique_ptr<VizPMI> pmi = support::pmiOf(L"a", kBox);
    std::unique_ptr<VizText> text = support::textAt(90, 90, 90);
    {
        const OutOfMemory outOfMemory(1);
        EXPECT_THROW(pmi->AddText(text.get()), std::bad_alloc);
    }
    EXPECT_TRUE(pmi->GetTexts().empty());
    EXPECT_EQ(support::extremaOf(*pmi), kBox);
}

// --- extrema, extents and rectangle -------------------------------------------------------------

TEST(PMIOutOfMemoryTest, MergeExtremaIsFalseAndLeavesNone) {
    OpenCollection collection;
    bool merged = true;
    {
        OutOfMemory outOfMemory(1);
        merged = collection.MergeExtrema(kBox.data());
    }
    EXPECT_FALSE(merged);
    EXPECT_FALSE(collection.Recenter());
    EXPECT_TRUE(collection.MergeExtrema(kBox.data()));
    EXPECT_EQ(grownExtremaOf(collection), grown(kBox));
}

TEST(PMIOutOfMemoryTest, FindExtentsIsFalseAndLeavesNone) {
    OpenCollection collection;
    collection.MergeExtrema(kBox.data());
    collection.SetFrame({0, 0, 0}, kX, kY);
    const float some = 0.0F;
    const float* extents = &some;
    bool found = true;
    bool got = true;
    {
        OutOfMemory outOfMemory(1);
        found = collection.FindExtents();
    }
    {
        OutOfMemory outOfMemory(1);
        got = collection.GetExtents(extents);
    }
    EXPECT_FALSE(found);
    EXPECT_FALSE(got);
    EXPECT_EQ(extents, nullptr);
    EXPECT_TRUE(collection.GetExtents(extents));
}

TEST(PMIOutOfMemoryTest, GetRectangleIsNullUntilThereIsMemory) {
    OpenCollection collection;
    collection.MergeExtrema(kBox.data());
    collection.SetFrame({0, 0, 0}, kX, kY);
    for (int attempt = 0; attempt < 2; ++attempt) {  // no extents, then no rectangle
        const float* rectangle = kBox.data();
        {
            OutOfMemory outOfMemory(attempt + 1);
            rectangle = collection.GetRectangle();
        }
        EXPECT_EQ(rectangle, nullptr);
    }
    const float* extents = nullptr;
    EXPECT_TRUE(collection.GetExtents(extents));
    EXPECT_NE(collection.GetRectangle(), nullptr);
}

TEST(PMIOutOfMemoryTest, WithoutMemoryForTheCubeThereAreNoExtrema) {
    OpenCollection collection;
    bool accumulated = false;
    {
        OutOfMemory outOfMemory(1);
        accumulated = collection.AccumulatePMIExtrema();
    }
    EXPECT_TRUE(accumulated);
    EXPECT_TRUE(grownExtremaOf(collection).empty());
}

// The names are looked up by an index, which takes memory too; what fails there is passed on.
TEST(PMIOutOfMemoryTest, AccumulatingPartOfTheWayLeaksNothingAndCanBeRepeated) {
    Model model;
    model.Add(1, support::pmiOf(L"a", kBox));
    FailEachAllocation([&](long failing) {
        const long before = OutOfMemory::BlocksInUse();
        bool failed = false;
        {
            OpenCollection collection(model, {L"a"});
            try {
                OutOfMemory outOfMemory(failing);
                failed = true;
                collection.AccumulatePMIExtrema();
                failed = outOfMemory.HasFailed();
            } catch (const std::bad_alloc&) {
            }
            EXPECT_TRUE(collection.AccumulatePMIExtrema()) << "at allocation " << failing;
            EXPECT_FALSE(grownExtremaOf(collection).empty()) << "at allocation " << failing;
        }
        EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
        return failed;
    });
}

// --- render ids ---------------------------------------------------------------------------------

/// Elements whose render ids take memory of their own.
class RenderIdsOutOfMemoryTest : public testing::Test {
protected:
    RenderIdsOutOfMemoryTest() {
        _model.AddMesh(1, L"a", support::idIn3D({1, 2, 3}));
        _model.AddMesh(2, L"b", support::idIn3D({4, 5, 6}));
        _model.AddMesh(3, L"c", support::idIn3D({7, 8, 9}));
        _collection = OpenCollection(_model, {L"a", L"b"});
        _collection.Set3DRenderID(support::idIn3D({10, 11, 12}));
    }
    /// Fails each allocation of @p ask in turn: the answer is false with null and 0, and nothing
    /// leaks. Without a failure there are @p expectedCount ids.
    template <typename Ask>
    void expectNothingForEachFailure(int expectedCount, Ask ask) {
        FailEachAllocation([&](long failing) {
            const long before = OutOfMemory::BlocksInUse();
            RenderId* out = nullptr;
            int count = -7;
            bool answer = false;
            bool failed = false;
            {
                Names names{L"c", L"a"};  // made while there is memory
                OutOfMemory outOfMemory(failing);
                answer = ask(out, count, names);
                failed = outOfMemory.HasFailed();
            }
            EXPECT_EQ(answer, !failed) << "at allocation " << failing;
            EXPECT_EQ(out == nullptr, failed) << "at allocation " << failing;
            EXPECT_EQ(count, failed ? 0 : expectedCount) << "at allocation " << failing;
            RenderId::DeleteRenderIdArr(out);
            EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
            return failed;
        });
    }

    Model _model;
    OpenCollection _collection;
};

TEST_F(RenderIdsOutOfMemoryTest, GetMemberRenderIdsIsFalseWithoutAnArray) {
    expectNothingForEachFailure(3, [this](RenderId*& out, int& count, Names&) {
        return _collection.GetMemberRenderIds(out, count, true);
    });
}

TEST_F(RenderIdsOutOfMemoryTest, GetNonmemberRenderIdsIsFalseWithoutAnArray) {
    expectNothingForEachFailure(1, [this](RenderId*& out, int& count, Names&) {
        return _collection.GetNonmemberRenderIds(out, count);
    });
}

TEST_F(RenderIdsOutOfMemoryTest, GetRenderIdsFromListIsFalseWithoutAnArray) {
    expectNothingForEachFailure(2, [this](RenderId*& out, int& count, Names& names) {
        return _collection.GetRenderIdsFromList(out, count, std::move(names));
    });
}

TEST_F(RenderIdsOutOfMemoryTest, AnArrayThatHoldsNothingIsGivenBack) {
    const OpenCollection collection(_model, {L"gone"});
    const long before = OutOfMemory::BlocksInUse();
    RenderId* out = nullptr;
    int count = -7;
    EXPECT_TRUE(collection.GetMemberRenderIds(out, count, true));
    EXPECT_EQ(OutOfMemory::BlocksInUse(), before);
}

// --- copies -------------------------------------------------------------------------------------

TEST(PMIOutOfMemoryTest, ACopyThatFailsPartOfTheWayLeaksNothing) {
    const Model model;
    OpenCollection original(model, {kLongId});
    original.MergeExtrema(kBox.data());
    original.SetFrame({0, 0, 0}, kX, kY);
    original.GetRectangle();
    const long allocations = FailEachAllocation([&](long failing) {
        const long before = OutOfMemory::BlocksInUse();
        bool thrown = false;
        bool failed = false;
        {
            OutOfMemory outOfMemory(failing);
            try {
                const OpenCollection copy(original);
            } catch (const std::bad_alloc&) {
                thrown = true;
            }
            failed = outOfMemory.HasFailed();
        }
        EXPECT_EQ(thrown, failed) << "at allocation " << failing;
        EXPECT_EQ(OutOfMemory::BlocksInUse(), before) << "at allocation " << failing;
        return failed;
    });
    EXPECT_GE(allocations, 5);  // three arrays, the members and their index
}

}  // namespace
}  // namespace KesVizCore
