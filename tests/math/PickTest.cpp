#include <KesVizCore/math/Pick.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

const std::vector<std::uint64_t> kPath = {1, 12, 7};

Pick filledPick() {
    Pick pick(-5, 0.5F, -2.25F);
    pick.Id = RenderId(kPath, View3D);
    pick.Position[0] = 0.1;
    pick.Position[1] = -0.2;
    pick.Position[2] = 1e300;
    return pick;
}

void expectFilled(const Pick& pick) {
    EXPECT_EQ(pick.Number, -5);
    EXPECT_EQ(pick.Value1, 0.5F);
    EXPECT_EQ(pick.Value2, -2.25F);
    EXPECT_EQ(pick.Id, RenderId(kPath, View3D));
    EXPECT_EQ(pick.Position[0], 0.1);
    EXPECT_EQ(pick.Position[1], -0.2);
    EXPECT_EQ(pick.Position[2], 1e300);
}

TEST(PickTest, IsZeroAndEmptyAtFirst) {
    const Pick pick;
    EXPECT_EQ(pick.Number, 0);
    EXPECT_EQ(pick.Value1, 0.0F);
    EXPECT_EQ(pick.Value2, 0.0F);
    EXPECT_EQ(pick.Id, RenderId());
    EXPECT_EQ(pick.Position[0], 0.0);
    EXPECT_EQ(pick.Position[1], 0.0);
    EXPECT_EQ(pick.Position[2], 0.0);
}

TEST(PickTest, StoresItsThreeArgumentsAndZeroesTheRest) {
    const Pick pick(-2147483647 - 1, 0.5F, -2.25F);
    EXPECT_EQ(pick.Number, -2147483647 - 1);
    EXPECT_EQ(pick.Value1, 0.5F);
    EXPECT_EQ(pick.Value2, -2.25F);
    EXPECT_EQ(pick.Id, RenderId());
    EXPECT_EQ(pick.Position[0], 0.0);
    EXPECT_EQ(pick.Position[1], 0.0);
    EXPECT_EQ(pick.Position[2], 0.0);
}

TEST(PickTest, NumberHas32Bits) {
    EXPECT_TRUE((std::is_same_v<decltype(Pick::Number), std::int32_t>));
}

TEST(PickTest, CopyHoldsEveryFieldAndLeavesTheOriginal) {
    const Pick pick = filledPick();
    const Pick copy(pick);
    expectFilled(copy);
    expectFilled(pick);
}

TEST(PickTest, CopiesHaveRenderIdsOfTheirOwn) {
    const Pick pick = filledPick();
    Pick copy(pick);
    copy.Id.SetValue(0, 99);
    expectFilled(pick);
}

TEST(PickTest, AssignmentHoldsEveryField) {
    const Pick pick = filledPick();
    Pick other(1, 2.0F, 3.0F);
    other = pick;
    expectFilled(other);
    expectFilled(pick);
}

TEST(PickTest, MoveConstructionHoldsEveryField) {
    Pick pick = filledPick();
    const Pick moved(std::move(pick));
    expectFilled(moved);
}

TEST(PickTest, MoveAssignmentHoldsEveryField) {
    Pick pick = filledPick();
    Pick moved(1, 2.0F, 3.0F);
    moved = std::move(pick);
    expectFilled(moved);
}

TEST(PickTest, MovesTheRenderIdWithoutCopyingIt) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Pick>);
    Pick pick = filledPick();
    const std::uint64_t* const ids = &pick.Id[0];
    const Pick moved(std::move(pick));
    EXPECT_EQ(&moved.Id[0], ids);
}

}  // namespace
}  // namespace KesVizCore
