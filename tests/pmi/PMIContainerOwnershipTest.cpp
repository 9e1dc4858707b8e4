// Who destroys what is in a PMI container, and when.

#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Deaths;
using support::newTelling;

/// A container, and the deaths of what was in it.
class PMIContainerOwnershipTest : public testing::Test {
protected:
    VizPMI* addPMI(const std::wstring& mechId, const std::string& name) {
        VizPMI* const pmi = newTelling<support::PMILoader>(name, _deaths);
        pmi->SetMechanicalID(mechId);
        _container->AddVizPMI(pmi);
        return pmi;
    }
    /// Its death is for the leak sanitizer to see.
    void addRecord(const std::wstring& id) {
        auto* const record = new SemanticPMI;
        record->Id = id;
        _container->AddSemanticPMI(record);
    }

    Deaths _deaths;
    std::unique_ptr<VizPMIContainer> _container = std::make_unique<VizPMIContainer>(1);
};

TEST_F(PMIContainerOwnershipTest, DestroysAnnotationsThenGeometryThenViewsThenCaptures) {
    for (const char* number : {" 1", " 2"}) {
        const std::string n(number);
        _container->AddCapture(newTelling<support::CaptureLoader>("capture" + n, _deaths));
        _container->AddView(newTelling<support::ViewLoader>("view" + n, _deaths));
        addRecord(L"record" + std::wstring(1, static_cast<wchar_t>(n[1])));
        _container->AddVizMarkCGPointSet(newTelling<support::PointSetLoader>("set" + n, _deaths));
        _container->AddVizMarkCGWire(newTelling<support::WireLoader>("wire" + n, _deaths));
        _container->AddVizMarkCGMesh(newTelling<support::MeshLoader>("mesh" + n, _deaths));
        addPMI(L"", "pmi" + n);
    }
    EXPECT_TRUE(_deaths.empty());
    _container.reset();
    EXPECT_EQ(_deaths, (Deaths{"pmi 1", "pmi 2", "mesh 1", "mesh 2", "wire 1", "wire 2", "set 1",
                               "set 2", "view 1", "view 2", "capture 1", "capture 2"}));
}

TEST_F(PMIContainerOwnershipTest, DestroysAnnotationsInTheOrderOfTheListNotOfTheMap) {
    addPMI(L"c", "first");
    addPMI(L"a", "second");
    addPMI(L"b", "third");
    _container.reset();
    EXPECT_EQ(_deaths, (Deaths{"first", "second", "third"}));
}

/// A record of a host's own kind.
class TellingRecord : public SemanticPMI {
public:
    TellingRecord(std::wstring id, Deaths& deaths) : _deaths(deaths) { Id = std::move(id); }
    ~TellingRecord() override { _deaths.push_back("record"); }

private:
    Deaths& _deaths;
};

TEST_F(PMIContainerOwnershipTest, DestroysRecordsAsWhatTheyAre) {
    _container->AddSemanticPMI(new TellingRecord(L"a", _deaths));
    _container->AddSemanticPMI(new TellingRecord(L"b", _deaths));
    addPMI(L"b", "annotation");
    EXPECT_TRUE(_container->DeletePMI(L"a"));
    EXPECT_EQ(_deaths, Deaths{"record"});
    _container.reset();
    EXPECT_EQ(_deaths, (Deaths{"record", "annotation", "record"}));
}

/// A host's own record and view that look at their container when they are destroyed.
class LookingRecord : public SemanticPMI {
public:
    LookingRecord(const VizPMIContainer& container, std::size_t& annotations)
        : _container(container), _annotations(annotations) {}
    ~LookingRecord() override { _annotations = _container.GetVizPMIMap().size(); }

private:
    const VizPMIContainer& _container;
    std::size_t& _annotations;
};

class LookingView : public VizView {
public:
    LookingView(const VizView& original, const VizPMIContainer& container, std::size_t& records)
        : VizView(original), _container(container), _records(records) {}
    LookingView(const LookingView&) = delete;
    LookingView& operator=(const LookingView&) = delete;
    ~LookingView() override { _records = _container.GetSemanticPMIs().size(); }

private:
    const VizPMIContainer& _container;
    std::size_t& _records;
};

TEST_F(PMIContainerOwnershipTest, TheMapsAreEmptiedWithWhatTheyHold) {
    std::size_t annotations = 99;
    std::size_t records = 99;
    addPMI(L"a", "annotation");
    _container->AddSemanticPMI(new LookingRecord(*_container, annotations));
    const auto original = support::load<support::ViewLoader>();
    _container->AddView(new LookingView(*original, *_container, records));
    _container.reset();
    EXPECT_EQ(annotations, 0U);
    EXPECT_EQ(records, 0U);
}

TEST_F(PMIContainerOwnershipTest, NullsInTheListsDoNotHarm) {
    _container->AddVizMarkCGMesh(nullptr);
    _container->AddVizMarkCGWire(nullptr);
    _container->AddVizMarkCGPointSet(nullptr);
    _container->AddView(nullptr);
    _container->AddCapture(nullptr);
    EXPECT_EQ(_container->GetViews(), std::vector<VizView*>{nullptr});
    EXPECT_FALSE(_container->IsEmpty());
    _container.reset();
    EXPECT_TRUE(_deaths.empty());
}

// --- copies -------------------------------------------------------------------------------------

TEST_F(PMIContainerOwnershipTest, AnAssignedContainerSharesEverything) {
    VizPMI* const pmi = addPMI(L"a", "pmi");
    addRecord(L"a");
    auto* const view = support::loadView().release();
    _container->AddView(view);
    _container->SetScaleFactor(2.5);
    _container->SetMatrix(static_cast<const double*>(nullptr), 0);

    auto assigned = std::make_unique<VizPMIContainer>(9);
    *assigned = *_container;
    EXPECT_EQ(assigned->GetRefID(), 1);
    EXPECT_EQ(assigned->GetVizPMIs(), std::vector<VizPMI*>{pmi});
    EXPECT_EQ(assigned->GetVizPMI(L"a"), pmi);
    EXPECT_EQ(assigned->GetSemanticPMIs(), _container->GetSemanticPMIs());
    EXPECT_EQ(assigned->GetViews(), std::vector<VizView*>{view});
    EXPECT_EQ(assigned->GetScaleFactor(), 2.5);
    EXPECT_EQ(assigned->GetMatrix(), _container->GetMatrix());

    *_container = VizPMIContainer(2);  // so that one of the two owns it all
    EXPECT_TRUE(_deaths.empty());
    assigned.reset();
    EXPECT_EQ(_deaths, Deaths{"pmi"});
}

TEST_F(PMIContainerOwnershipTest, ACopyConstructedContainerSharesEverything) {
    VizPMI* const pmi = addPMI(L"a", "pmi");
    addRecord(L"a");
    auto copy = std::make_unique<VizPMIContainer>(*_container);
    EXPECT_EQ(copy->GetRefID(), 1);
    EXPECT_EQ(copy->GetVizPMIs(), std::vector<VizPMI*>{pmi});
    EXPECT_EQ(copy->GetSemanticPMIs(), _container->GetSemanticPMIs());
    *_container = VizPMIContainer(2);
    copy.reset();
    EXPECT_EQ(_deaths, Deaths{"pmi"});
}

// --- deleting -----------------------------------------------------------------------------------

TEST_F(PMIContainerOwnershipTest, DeletePMIDestroysAnnotationAndRecord) {
    addPMI(L"a", "a");
    addPMI(L"b", "b");
    addRecord(L"a");
    EXPECT_TRUE(_container->DeletePMI(L"a"));
    EXPECT_EQ(_deaths, Deaths{"a"});
    EXPECT_EQ(_container->GetVizPMI(L"a"), nullptr);
    EXPECT_FALSE(_container->HasSemanticPMI());
    EXPECT_EQ(_container->GetVizPMIs(), std::vector<VizPMI*>{_container->GetVizPMI(L"b")});
}

TEST_F(PMIContainerOwnershipTest, DeletePMIKeepsTheOrderOfTheOthers) {
    VizPMI* const a = addPMI(L"a", "a");
    addPMI(L"b", "b");
    VizPMI* const c = addPMI(L"c", "c");
    EXPECT_TRUE(_container->DeletePMI(L"b"));
    EXPECT_EQ(_container->GetVizPMIs(), (std::vector<VizPMI*>{a, c}));
}

TEST_F(PMIContainerOwnershipTest, DeletePMIOfAnAnnotationAloneIsTrue) {
    addPMI(L"a", "a");
    addRecord(L"b");
    EXPECT_TRUE(_container->DeletePMI(L"a"));
    EXPECT_EQ(_deaths, Deaths{"a"});
    EXPECT_TRUE(_container->HasSemanticPMI());
}

TEST_F(PMIContainerOwnershipTest, DeletePMIOfARecordAloneIsTrue) {
    VizPMI* const a = addPMI(L"a", "a");
    addRecord(L"b");
    EXPECT_TRUE(_container->DeletePMI(L"b"));
    EXPECT_FALSE(_container->HasSemanticPMI());
    EXPECT_TRUE(_deaths.empty());
    EXPECT_EQ(_container->GetVizPMI(L"a"), a);
}

TEST_F(PMIContainerOwnershipTest, DeletePMIOfAnUnknownIdIsFalse) {
    addPMI(L"a", "a");
    addRecord(L"a");
    EXPECT_FALSE(_container->DeletePMI(L"b"));
    EXPECT_FALSE(_container->DeletePMI(L""));
    EXPECT_TRUE(_deaths.empty());
    EXPECT_TRUE(_container->HasSemanticPMI());
}

TEST_F(PMIContainerOwnershipTest, DeletePMITwiceIsFalseTheSecondTime) {
    addPMI(L"a", "a");
    EXPECT_TRUE(_container->DeletePMI(L"a"));
    EXPECT_FALSE(_container->DeletePMI(L"a"));
}

TEST_F(PMIContainerOwnershipTest, DeletePMIMakesRoomForANewAnnotationOfTheId) {
    addPMI(L"a", "old");
    _container->DeletePMI(L"a");
    VizPMI* const fresh = addPMI(L"a", "new");
    EXPECT_EQ(_container->GetVizPMI(L"a"), fresh);
}

// Only the one that the map names can be found by the empty id.
TEST_F(PMIContainerOwnershipTest, DeletePMIOfTheEmptyIdDestroysTheLastAlone) {
    VizPMI* const first = addPMI(L"", "first");
    addPMI(L"", "second");
    EXPECT_TRUE(_container->DeletePMI(L""));
    EXPECT_EQ(_deaths, Deaths{"second"});
    EXPECT_EQ(_container->GetVizPMIs(), std::vector<VizPMI*>{first});
    EXPECT_TRUE(_container->GetVizPMIMap().empty());
    EXPECT_FALSE(_container->DeletePMI(L""));
    EXPECT_EQ(_deaths, Deaths{"second"});
    _container.reset();
    EXPECT_EQ(_deaths, (Deaths{"second", "first"}));
}

TEST_F(PMIContainerOwnershipTest, DeletePMIMayBeGivenAKeyOfTheMaps) {
    for (const wchar_t* id : {L"a long mechanical id, not kept in place", L"b"}) {
        addPMI(id, "pmi");
        addRecord(id);
    }
    while (!_container->GetVizPMIMap().empty()) {
        EXPECT_TRUE(_container->DeletePMI(_container->GetVizPMIMap().begin()->first));
    }
    EXPECT_FALSE(_container->HasSemanticPMI());
    addRecord(L"another long mechanical id, not kept in place");
    EXPECT_TRUE(_container->DeletePMI(_container->GetSemanticPMIs().begin()->first));
    addRecord(L"another long mechanical id, not kept in place");
    EXPECT_TRUE(_container->DeletePMI(_container->GetSemanticPMIs().begin()->second->Id));
    EXPECT_TRUE(_container->IsEmpty());
}

// --- clearing -----------------------------------------------------------------------------------

// The list alone is emptied: the map goes on naming annotations that are the caller's from now on.
TEST_F(PMIContainerOwnershipTest, ClearingEmptiesTheListAndLeavesTheMap) {
    const std::unique_ptr<VizPMI> pmi(addPMI(L"a", "a"));
    addRecord(L"a");
    _container->AddVizMarkCGMesh(support::loadMesh().release());
    _container->ClearPMIWithoutDeletingIt();
    EXPECT_TRUE(_container->GetVizPMIs().empty());
    EXPECT_EQ(_container->GetVizPMI(L"a"), pmi.get());
    EXPECT_EQ(_container->GetVizPMIMap().size(), 1U);
    EXPECT_TRUE(_container->HasSemanticPMI());
    EXPECT_EQ(_container->GetVizMarkCGMeshes().size(), 1U);
    _container.reset();
    EXPECT_TRUE(_deaths.empty());
}

TEST_F(PMIContainerOwnershipTest, DisplayNamesOfClearedAnnotationsAreStillFound) {
    const std::unique_ptr<VizPMI> pmi(addPMI(L"a", "a"));
    pmi->SetName(L"name");
    _container->ClearPMIWithoutDeletingIt();
    std::wstring name;
    EXPECT_TRUE(_container->GetDisplayName(L"a", name));
    EXPECT_EQ(name, L"name");
}

TEST_F(PMIContainerOwnershipTest, AClearedContainerIsEmptyAlthoughTheMapIsNot) {
    const std::unique_ptr<VizPMI> pmi(addPMI(L"a", "a"));
    _container->ClearPMIWithoutDeletingIt();
    EXPECT_TRUE(_container->IsEmpty());
}

TEST_F(PMIContainerOwnershipTest, AnIdThatTheMapStillHasIsRefusedAfterClearing) {
    const std::unique_ptr<VizPMI> cleared(addPMI(L"a", "cleared"));
    _container->ClearPMIWithoutDeletingIt();
    const std::unique_ptr<VizPMI> refused(addPMI(L"a", "refused"));
    EXPECT_TRUE(_container->GetVizPMIs().empty());
    EXPECT_EQ(_container->GetVizPMI(L"a"), cleared.get());
}

TEST_F(PMIContainerOwnershipTest, DeletePMIDestroysWhatTheMapStillHasAfterClearing) {
    addPMI(L"a", "a");
    _container->ClearPMIWithoutDeletingIt();
    EXPECT_TRUE(_container->DeletePMI(L"a"));
    EXPECT_EQ(_deaths, Deaths{"a"});
    EXPECT_EQ(_container->GetVizPMI(L"a"), nullptr);
}

}  // namespace
}  // namespace KesVizCore
