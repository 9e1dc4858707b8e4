#include <KesVizCore/report/AllowThrow.h>

#include <gtest/gtest.h>

namespace KesVizCore {
namespace {

const bool allowedAtLoad = GetAllowThrow();

TEST(AllowThrowTest, IsFalseAtLoad) {
    EXPECT_FALSE(allowedAtLoad);
}

TEST(AllowThrowTest, IsWhatWasSetLast) {
    SetAllowThrow(true);
    EXPECT_TRUE(GetAllowThrow());
    SetAllowThrow(true);
    EXPECT_TRUE(GetAllowThrow());
    SetAllowThrow(false);
    EXPECT_FALSE(GetAllowThrow());
}

}  // namespace
}  // namespace KesVizCore
