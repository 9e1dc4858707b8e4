#include "reading/occ/SchemaName.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(SchemaNameTest, EditionOfAp242IsToldByItsObjectIdentifier) {
    const std::string name = "AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF";
    EXPECT_EQ(schemaName(name + " { 1 0 10303 442 1 1 4 }"), "AP242 edition 1");
    EXPECT_EQ(schemaName(name + ". {1 0 10303 442 2 1 4 }"), "AP242 edition 1");
    EXPECT_EQ(schemaName(name + " { 1 0 10303 442 3 1 4 }"), "AP242 edition 2");
    EXPECT_EQ(schemaName(name + " { 1 0 10303 442 4 1 4 }"), "AP242 edition 3");
}

TEST(SchemaNameTest, Ap242WithoutIdentifierHasNoEdition) {
    EXPECT_EQ(schemaName("AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF"), "AP242");
}

TEST(SchemaNameTest, BothEditionsOfAp203AreKnown) {
    EXPECT_EQ(schemaName("CONFIG_CONTROL_DESIGN"), "AP203");
    EXPECT_EQ(schemaName("AP203_CONFIGURATION_CONTROLLED_3D_DESIGN_OF_MECHANICAL_PARTS_AND_"
                         "ASSEMBLIES_MIM_LF { 1 0 10303 403 2 1 2}"),
              "AP203 edition 2");
}

TEST(SchemaNameTest, Ap214HasManyIdentifiersAndOneName) {
    EXPECT_EQ(schemaName("AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }"), "AP214");
    EXPECT_EQ(schemaName("AUTOMOTIVE_DESIGN_CC1 { 1 2 10303 214 -1 1 3  2}"), "AP214");
}

TEST(SchemaNameTest, OtherSchemasKeepTheirOwnNames) {
    EXPECT_EQ(schemaName("SHIP_ARRANGEMENT_SCHEMA { 1 0 10303 215 1 1 1 }"),
              "SHIP_ARRANGEMENT_SCHEMA");
    EXPECT_EQ(schemaName(""), "");
}

}  // namespace
}  // namespace kesview
