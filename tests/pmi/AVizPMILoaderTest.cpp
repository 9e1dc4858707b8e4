#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/AVizPMILoader.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace KesVizCore {
namespace {

using support::PMILoader;

static_assert(std::is_abstract_v<AVizPMILoader>, "what is made of the data is the host's to say");
static_assert(std::is_base_of_v<AVizElementLoader, AVizPMILoader>);

std::unique_ptr<VizPMI> made(PMILoader& loader) {
    return std::unique_ptr<VizPMI>(static_cast<VizPMI*>(loader.Load()));
}

void expectTypes(const VizPMI& pmi, int group, int type) {
    EXPECT_EQ(pmi.GetGroupType().Code, group);
    EXPECT_EQ(pmi.GetType().Code, type);
}

TEST(AVizPMILoaderTest, MakesAnnotationsWithoutTypesAtFirst) {
    PMILoader loader;
    const auto pmi = made(loader);
    EXPECT_EQ(pmi->GetElementType(), "PMI");
    expectTypes(*pmi, 0, 0);
    EXPECT_EQ(pmi->GetGroupType().Name, "");
    EXPECT_EQ(pmi->GetType().Name, "");
}

TEST(AVizPMILoaderTest, MakesAnnotationsOfTheTypesGivenLast) {
    PMILoader loader;
    loader.setGroupAndType({1, "Dimension", 11}, {2, "Radius", 12});
    const auto first = made(loader);
    loader.setGroupAndType({3, "Tolerance", 13}, {4, "Flatness", 14});
    const auto second = made(loader);
    expectTypes(*first, 1, 2);
    expectTypes(*second, 3, 4);
    EXPECT_EQ(second->GetGroupType().Name, "Tolerance");
    EXPECT_EQ(second->GetGroupType().Number2, 13);
    EXPECT_EQ(second->GetType().Name, "Flatness");
    EXPECT_EQ(second->GetType().Number2, 14);
}

TEST(AVizPMILoaderTest, StoresCopiesOfTheTypes) {
    PMILoader loader;
    VizPMIType group{1, "Dimension", 0};
    loader.setGroupAndType(group, group);
    group.Code = 9;
    expectTypes(*made(loader), 1, 1);
}

TEST(AVizPMILoaderTest, MakesANewAnnotationEachTime) {
    PMILoader loader;
    const auto first = made(loader);
    const auto second = made(loader);
    EXPECT_NE(first, second);
    EXPECT_EQ(second->GetID(), first->GetID() + 1);
}

TEST(AVizPMILoaderTest, CopiesAndMovesCarryPlacementAndTypes) {
    PMILoader loader;
    loader.setGroupAndType({1, "Dimension", 0}, {2, "Radius", 0});
    loader._transformation[3][1] = 5.0F;
    PMILoader copy(loader);
    PMILoader assigned;
    assigned = loader;
    PMILoader moved(std::move(loader));
    PMILoader moveAssigned;
    moveAssigned = PMILoader(copy);
    for (PMILoader* other : {&copy, &assigned, &moved, &moveAssigned}) {
        expectTypes(*made(*other), 1, 2);
        EXPECT_EQ(made(*other)->GetType().Name, "Radius");
        EXPECT_EQ(other->_transformation[3][1], 5.0F);
    }
}

// A host that moves a loader and loads on with it must not get annotations without types.
TEST(AVizPMILoaderTest, ALoaderThatWasMovedFromKeepsItsTypes) {
    PMILoader loader;
    loader.setGroupAndType({1, "Dimension", 0}, {2, "Radius", 0});
    PMILoader moved(std::move(loader));
    PMILoader assigned;
    assigned = std::move(moved);
    for (PMILoader* source : {&loader, &moved}) {
        expectTypes(*made(*source), 1, 2);
        EXPECT_EQ(made(*source)->GetType().Name, "Radius");
        EXPECT_EQ(made(*source)->GetGroupType().Name, "Dimension");
    }
}

}  // namespace
}  // namespace KesVizCore
