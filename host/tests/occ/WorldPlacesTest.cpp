#include "reading/occ/WorldPlaces.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

Component use(std::uint32_t product, double x) {
    Component component;
    component.product = product;
    component.parentFromChild[12] = x;
    return component;
}

TEST(WorldPlacesTest, PlacesAddUpAlongTheTree) {
    Document document;
    document.products.resize(3);
    document.roots = {use(0, 1)};
    document.products[0].components = {use(1, 10)};
    document.products[1].components = {use(2, 100)};
    EXPECT_EQ(firstPlaces(document)[2][12], 111);
}

TEST(WorldPlacesTest, TheOrderOfFactorsIsParentFirst) {
    Document document;
    document.products.resize(2);
    Component turned = use(0, 5);
    turned.parentFromChild = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1};  // x becomes y
    document.roots = {turned};
    document.products[0].components = {use(1, 3)};
    const Matrix place = firstPlaces(document)[1];
    EXPECT_EQ(place[12], 5);
    EXPECT_EQ(place[13], 3);
}

TEST(WorldPlacesTest, TheFirstOfSeveralUsesCounts) {
    Document document;
    document.products.resize(2);
    document.roots = {use(0, 0)};
    document.products[0].components = {use(1, 7), use(1, 8)};
    EXPECT_EQ(firstPlaces(document)[1][12], 7);
}

TEST(WorldPlacesTest, UnusedProductsStandAtTheOrigin) {
    Document document;
    document.products.resize(1);
    EXPECT_EQ(firstPlaces(document)[0], identityMatrix);
}

}  // namespace
}  // namespace kesview
