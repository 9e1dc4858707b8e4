#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::loadCapture;
using support::loadMesh;
using support::loadPMI;
using support::loadPointSet;
using support::loadView;
using support::loadWire;
using support::pmiNamed;

using Names = std::vector<std::wstring>;
using PMIMap = std::map<std::wstring, VizPMI*>;

VizPMI* addPMI(VizPMIContainer& container, const std::wstring& mechId,
               const std::wstring& name = std::wstring()) {
    VizPMI* const pmi = pmiNamed(mechId, name).release();
    container.AddVizPMI(pmi);
    return pmi;
}

SemanticPMI* addRecord(VizPMIContainer& container, const std::wstring& id) {
    auto* const record = new SemanticPMI;
    record->Id = id;
    container.AddSemanticPMI(record);
    return record;
}

TEST(VizPMIContainerTest, ItsTypeIsPMIContainer) {
    VizPMIContainer container(1);
    AVizContainer& base = container;
    EXPECT_EQ(VizPMIContainer::TypeID(), "PMIContainer");
    EXPECT_EQ(base.GetTypeName(), "PMIContainer");
}

TEST(VizPMIContainerTest, KeepsTheReferenceIdOfItsModel) {
    EXPECT_EQ(VizPMIContainer(-7).GetRefID(), -7);
}

TEST(VizPMIContainerTest, IsEmptyAtFirst) {
    const VizPMIContainer container(1);
    EXPECT_TRUE(container.GetVizPMIs().empty());
    EXPECT_TRUE(container.GetVizMarkCGMeshes().empty());
    EXPECT_TRUE(container.GetVizMarkCGWires().empty());
    EXPECT_TRUE(container.GetVizMarkCGPointSets().empty());
    EXPECT_TRUE(container.GetViews().empty());
    EXPECT_TRUE(container.GetCaptures().empty());
    EXPECT_TRUE(container.GetVizPMIMap().empty());
    EXPECT_TRUE(container.GetSemanticPMIs().empty());
    EXPECT_FALSE(container.HasSemanticPMI());
    EXPECT_TRUE(container.IsEmpty());
}

// --- adding -------------------------------------------------------------------------------------

TEST(VizPMIContainerTest, AnnotationsStandInTheListByOrderAndInTheMapById) {
    VizPMIContainer container(1);
    VizPMI* const b = addPMI(container, L"b");
    VizPMI* const a = addPMI(container, L"a");
    EXPECT_EQ(container.GetVizPMIs(), (std::vector<VizPMI*>{b, a}));
    EXPECT_EQ(container.GetVizPMIMap(), (PMIMap{{L"a", a}, {L"b", b}}));
}

TEST(VizPMIContainerTest, ANullAnnotationIsIgnored) {
    VizPMIContainer container(1);
    container.AddVizPMI(nullptr);
    EXPECT_TRUE(container.GetVizPMIs().empty());
    EXPECT_TRUE(container.GetVizPMIMap().empty());
}

TEST(VizPMIContainerTest, ASecondAnnotationOfOneIdIsRefusedAndLivesOn) {
    support::Deaths deaths;
    VizPMIContainer container(1);
    VizPMI* const first = addPMI(container, L"id");
    const std::unique_ptr<VizPMI> refused(support::newTelling<support::PMILoader>("it", deaths));
    refused->SetMechanicalID(L"id");
    container.AddVizPMI(refused.get());
    EXPECT_TRUE(deaths.empty());
    EXPECT_EQ(container.GetVizPMIs(), std::vector<VizPMI*>{first});
    EXPECT_EQ(container.GetVizPMI(L"id"), first);
}

TEST(VizPMIContainerTest, AnnotationsOfTheEmptyIdAreAllTakenAndTheMapNamesTheLast) {
    VizPMIContainer container(1);
    VizPMI* const first = addPMI(container, L"");
    VizPMI* const second = addPMI(container, L"");
    VizPMI* const third = addPMI(container, L"");
    EXPECT_EQ(container.GetVizPMIs(), (std::vector<VizPMI*>{first, second, third}));
    EXPECT_EQ(container.GetVizPMIMap(), (PMIMap{{L"", third}}));
    EXPECT_EQ(container.GetVizPMI(L""), third);
}

TEST(VizPMIContainerTest, AnIdChangedLaterDoesNotMoveTheAnnotationInTheMap) {
    VizPMIContainer container(1);
    VizPMI* const pmi = addPMI(container, L"then");
    pmi->SetMechanicalID(L"now");
    EXPECT_EQ(container.GetVizPMI(L"then"), pmi);
    EXPECT_EQ(container.GetVizPMI(L"now"), nullptr);
}

TEST(VizPMIContainerTest, RecordsStandUnderTheirId) {
    VizPMIContainer container(1);
    SemanticPMI* const b = addRecord(container, L"b");
    SemanticPMI* const nameless = addRecord(container, L"");
    EXPECT_EQ(container.GetSemanticPMIs(),
              (std::map<std::wstring, SemanticPMI*>{{L"", nameless}, {L"b", b}}));
    EXPECT_TRUE(container.HasSemanticPMI());
}

TEST(VizPMIContainerTest, ANullRecordIsIgnored) {
    VizPMIContainer container(1);
    container.AddSemanticPMI(nullptr);
    EXPECT_FALSE(container.HasSemanticPMI());
}

TEST(VizPMIContainerTest, ASecondRecordOfOneIdIsRefusedAndLivesOn) {
    VizPMIContainer container(1);
    for (const wchar_t* id : {L"id", L""}) {  // the empty id is no exception here
        SemanticPMI* const first = addRecord(container, id);
        const std::unique_ptr<SemanticPMI> refused(addRecord(container, id));
        EXPECT_EQ(container.GetSemanticPMIs().at(id), first);
        EXPECT_EQ(refused->Id, id);
    }
    EXPECT_EQ(container.GetSemanticPMIs().size(), 2U);
}

TEST(VizPMIContainerTest, ConstructionGeometryViewsAndCapturesAreAppendedToTheirLists) {
    VizPMIContainer container(1);
    VizMesh* const meshes[] = {loadMesh().release(), loadMesh().release()};
    VizWire* const wires[] = {loadWire().release(), loadWire().release()};
    VizPointSet* const sets[] = {loadPointSet().release(), loadPointSet().release()};
    VizView* const views[] = {loadView().release(), loadView().release()};
    VizCapture* const captures[] = {loadCapture().release(), loadCapture().release()};
    for (const int place : {0, 1}) {
        container.AddVizMarkCGMesh(meshes[place]);
        container.AddVizMarkCGWire(wires[place]);
        container.AddVizMarkCGPointSet(sets[place]);
        container.AddView(views[place]);
        container.AddCapture(captures[place]);
    }
    EXPECT_EQ(container.GetVizMarkCGMeshes(), (std::vector<VizMesh*>{meshes[0], meshes[1]}));
    EXPECT_EQ(container.GetVizMarkCGWires(), (std::vector<VizWire*>{wires[0], wires[1]}));
    EXPECT_EQ(container.GetVizMarkCGPointSets(), (std::vector<VizPointSet*>{sets[0], sets[1]}));
    EXPECT_EQ(container.GetViews(), (std::vector<VizView*>{views[0], views[1]}));
    EXPECT_EQ(container.GetCaptures(), (std::vector<VizCapture*>{captures[0], captures[1]}));
}

// --- lists --------------------------------------------------------------------------------------

TEST(VizPMIContainerTest, OneOfAnyKindThatCountsMakesItNotEmpty) {
    VizPMIContainer withPMI(1);
    addPMI(withPMI, L"a");
    EXPECT_FALSE(withPMI.IsEmpty());
    VizPMIContainer withRecord(1);
    addRecord(withRecord, L"a");
    EXPECT_FALSE(withRecord.IsEmpty());
    VizPMIContainer withMesh(1);
    withMesh.AddVizMarkCGMesh(loadMesh().release());
    EXPECT_FALSE(withMesh.IsEmpty());
    VizPMIContainer withWire(1);
    withWire.AddVizMarkCGWire(loadWire().release());
    EXPECT_FALSE(withWire.IsEmpty());
    VizPMIContainer withPointSet(1);
    withPointSet.AddVizMarkCGPointSet(loadPointSet().release());
    EXPECT_FALSE(withPointSet.IsEmpty());
}

// Views and captures only show what is there; alone they are nothing.
TEST(VizPMIContainerTest, ViewsAndCapturesAloneLeaveItEmpty) {
    VizPMIContainer container(1);
    container.AddView(loadView().release());
    container.AddCapture(loadCapture().release());
    EXPECT_TRUE(container.IsEmpty());
}

// --- asking -------------------------------------------------------------------------------------

TEST(VizPMIContainerTest, AnUnknownIdHasNoAnnotation) {
    VizPMIContainer container(1);
    addPMI(container, L"a");
    EXPECT_EQ(container.GetVizPMI(L"A"), nullptr);
    EXPECT_EQ(container.GetVizPMI(L""), nullptr);
}

TEST(VizPMIContainerTest, GetSemanticPMIFindsTheRecordOfTheId) {
    VizPMIContainer container(1);
    SemanticPMI* const record = addRecord(container, L"a");
    SemanticPMI* out = nullptr;
    EXPECT_TRUE(container.GetSemanticPMI(L"a", out));
    EXPECT_EQ(out, record);
}

TEST(VizPMIContainerTest, GetSemanticPMILeavesOutAloneWithoutARecord) {
    VizPMIContainer container(1);
    addPMI(container, L"a");
    SemanticPMI other;
    SemanticPMI* out = &other;
    EXPECT_FALSE(container.GetSemanticPMI(L"a", out));
    EXPECT_EQ(out, &other);
}

TEST(VizPMIContainerTest, GetSemanticPMIAsStringAnswersTheDump) {
    VizPMIContainer container(1);
    SemanticPMI* const record = addRecord(container, L"a");
    record->Name = L"Position";
    record->Attributes = {{L"Tolerance Value", L"0.2"}, {L"DatumRefDatas", L"A"}};
    std::wstring out = L"before";
    EXPECT_TRUE(container.GetSemanticPMIAsString(L"a", out));
    EXPECT_EQ(out,
              L"--------------\n"
              L"Semantic Info:\n"
              L"\n"
              L"ID : a\n"
              L"Name : Position\n"
              L"Label : \n"
              L"Units : millimeters, radians\n"
              L"Tolerance Value : 0.2\n"
              L"Links (1) : \n"
              L"A (PMI)\n"
              L"--------------\n");
}

TEST(VizPMIContainerTest, GetSemanticPMIAsStringSaysThatThereIsNone) {
    VizPMIContainer container(1);
    addPMI(container, L"a");
    std::wstring out = L"before";
    EXPECT_FALSE(container.GetSemanticPMIAsString(L"a", out));
    EXPECT_EQ(out, L"Semantic PMI not found.");
}

TEST(VizPMIContainerTest, GetBREPLinksAppendsTheLinkedEntities) {
    VizPMIContainer container(1);
    const EntityId face(5, FaceType, 1);
    const EntityId edge(5, EdgeType, 2);
    const EntityId before(0, BodyType, 9);
    addRecord(container, L"a")->LinkedEntities = {face, edge};
    std::vector<EntityId> out{before};
    EXPECT_TRUE(container.GetBREPLinks(L"a", out));
    EXPECT_EQ(out, (std::vector<EntityId>{before, face, edge}));
}

TEST(VizPMIContainerTest, GetBREPLinksIsFalseWithoutARecord) {
    const VizPMIContainer container(1);
    std::vector<EntityId> out{EntityId(0, BodyType, 9)};
    EXPECT_FALSE(container.GetBREPLinks(L"a", out));  // although there is an id in out
    EXPECT_EQ(out.size(), 1U);
}

TEST(VizPMIContainerTest, GetBREPLinksOfARecordWithoutAnyTellsWhetherOutHoldsSome) {
    VizPMIContainer container(1);
    addRecord(container, L"a");
    std::vector<EntityId> empty;
    EXPECT_FALSE(container.GetBREPLinks(L"a", empty));
    std::vector<EntityId> filled{EntityId(0, BodyType, 9)};
    EXPECT_TRUE(container.GetBREPLinks(L"a", filled));
    EXPECT_EQ(filled.size(), 1U);
}

TEST(VizPMIContainerTest, GetPMILinksReplacesOutByTheReferences) {
    VizPMIContainer container(1);
    addRecord(container, L"a")->Attributes[L"DatumRefDatas"] = L"A, , B";
    Names out{L"before"};
    EXPECT_TRUE(container.GetPMILinks(L"a", out));
    EXPECT_EQ(out, (Names{L"A", L"", L"B"}));
}

TEST(VizPMIContainerTest, GetPMILinksLeavesOutAloneWithoutRecordOrReferences) {
    VizPMIContainer container(1);
    addRecord(container, L"a");
    Names out{L"before"};
    EXPECT_FALSE(container.GetPMILinks(L"a", out));
    EXPECT_FALSE(container.GetPMILinks(L"b", out));
    EXPECT_EQ(out, Names{L"before"});
}

// --- display names ------------------------------------------------------------------------------

/// The display name of an annotation and a record of one id, made of their names; "none" where
/// there is no answer.
struct Named {
    bool hasRecord;
    std::wstring recordName;
    std::wstring recordLabel;
    bool hasPMI;
    std::wstring pmiName;
    std::string typeName;
};

std::wstring displayNameOf(const Named& named) {
    VizPMIContainer container(1);
    if (named.hasRecord) {
        SemanticPMI* const record = addRecord(container, L"a");
        record->Name = named.recordName;
        record->Label = named.recordLabel;
    }
    if (named.hasPMI) {
        auto pmi = loadPMI({1, "group", 0}, {2, named.typeName, 0});
        pmi->SetMechanicalID(L"a");
        pmi->SetName(named.pmiName);
        container.AddVizPMI(pmi.release());
    }
    std::wstring out = L"none";
    EXPECT_EQ(container.GetDisplayName(L"a", out), named.hasRecord || named.hasPMI);
    return out;
}

TEST(VizPMIContainerTest, TheDisplayNameIsTheRecordsNameFirst) {
    EXPECT_EQ(displayNameOf({true, L"record", L"label", true, L"pmi", "type"}), L"record");
    EXPECT_EQ(displayNameOf({true, L"record", L"", false, L"", ""}), L"record");
}

TEST(VizPMIContainerTest, TheDisplayNameIsTheRecordsLabelNext) {
    EXPECT_EQ(displayNameOf({true, L"", L"label", true, L"pmi", "type"}), L"label");
    EXPECT_EQ(displayNameOf({true, L"", L"label", false, L"", ""}), L"label");
}

TEST(VizPMIContainerTest, TheDisplayNameIsTheAnnotationsNameNext) {
    EXPECT_EQ(displayNameOf({true, L"", L"", true, L"pmi", "type"}), L"pmi");
    EXPECT_EQ(displayNameOf({false, L"", L"", true, L"pmi", "type"}), L"pmi");
}

TEST(VizPMIContainerTest, TheDisplayNameIsTheAnnotationsTypeNameLast) {
    EXPECT_EQ(displayNameOf({true, L"", L"", true, L"", "type"}), L"type");
    EXPECT_EQ(displayNameOf({false, L"", L"", true, L"", "type"}), L"type");
}

TEST(VizPMIContainerTest, TheTypeNameIsWidenedCharacterByCharacter) {
    EXPECT_EQ(displayNameOf({false, L"", L"", true, L"", "\xD8 5"}), L"\x00D8 5");
}

TEST(VizPMIContainerTest, TheDisplayNameIsEmptyWhereAllNamesAre) {
    EXPECT_EQ(displayNameOf({true, L"", L"", true, L"", ""}), L"");
    EXPECT_EQ(displayNameOf({true, L"", L"", false, L"", ""}), L"");
    EXPECT_EQ(displayNameOf({false, L"", L"", true, L"", ""}), L"");
}

TEST(VizPMIContainerTest, WithoutAnnotationAndRecordThereIsNoDisplayName) {
    EXPECT_EQ(displayNameOf({false, L"", L"", false, L"", ""}), L"none");
}

// --- scale --------------------------------------------------------------------------------------

TEST(VizPMIContainerTest, TheScaleFactorIsOneUntilItIsSet) {
    VizPMIContainer container(1);
    EXPECT_EQ(container.GetScaleFactor(), 1.0);
    container.SetScaleFactor(-0.0254);
    EXPECT_EQ(container.GetScaleFactor(), -0.0254);
}

}  // namespace
}  // namespace KesVizCore
