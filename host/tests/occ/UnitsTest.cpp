#include "reading/occ/Units.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

TEST(UnitsTest, CommonUnitsHaveNames) {
    EXPECT_EQ(unitName(1), "millimetre");
    EXPECT_EQ(unitName(25.4), "inch");
    EXPECT_EQ(unitName(1000), "metre");
    EXPECT_EQ(unitName(10), "centimetre");
    EXPECT_EQ(unitName(304.8), "foot");
    EXPECT_EQ(unitName(0.001), "micrometre");
}

TEST(UnitsTest, RoundedFactorsAreRecognised) {
    EXPECT_EQ(unitName(25.4000508), "inch");  // the survey inch
    EXPECT_EQ(unitName(304.79999), "foot");
}

TEST(UnitsTest, OtherLengthsHaveNone) {
    EXPECT_EQ(unitName(7), "");
    EXPECT_EQ(unitName(0), "");
}

}  // namespace
}  // namespace kesview
