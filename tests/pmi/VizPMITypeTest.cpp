#include <KesVizCore/pmi/VizPMIType.h>

#include <gtest/gtest.h>

#include <string>

namespace KesVizCore {
namespace {

TEST(VizPMITypeTest, IsAllZeroAndNamelessAtFirst) {
    const VizPMIType type;
    EXPECT_EQ(type.Code, 0);
    EXPECT_EQ(type.Name, "");
    EXPECT_EQ(type.Number2, 0);
}

TEST(VizPMITypeTest, FieldsStandInTheOrderCodeNameSecondNumber) {
    const VizPMIType type{7, "Datum", -9};
    EXPECT_EQ(type.Code, 7);
    EXPECT_EQ(type.Name, "Datum");
    EXPECT_EQ(type.Number2, -9);
}

TEST(VizPMITypeTest, CopiesCarryAllThreeFields) {
    const VizPMIType type{7, "Datum", -9};
    const VizPMIType copy(type);
    VizPMIType assigned{1, "Note", 2};
    assigned = type;
    for (const VizPMIType* other : {&copy, static_cast<const VizPMIType*>(&assigned)}) {
        EXPECT_EQ(other->Code, 7);
        EXPECT_EQ(other->Name, "Datum");
        EXPECT_EQ(other->Number2, -9);
    }
}

}  // namespace
}  // namespace KesVizCore
