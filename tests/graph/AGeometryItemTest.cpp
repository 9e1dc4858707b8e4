#include <KesVizCore/graph/AGeometryItem.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace KesVizCore {
namespace {

using Floats = std::array<float, 4>;

/// The least that a host completes.
class HostItem : public AGeometryItem {
public:
    explicit HostItem(std::uint64_t id, bool* destroyed = nullptr)
        : AGeometryItem(id), _destroyed(destroyed) {}
    ~HostItem() override {
        if (_destroyed != nullptr) {
            *_destroyed = true;
        }
    }
    HostItem(const HostItem&) = default;
    HostItem& operator=(const HostItem&) = default;

    bool GetExtents(float* /*extrema*/) const override { return false; }
    void SetVisible(const bool& /*visible*/) override {}
    bool IsVisible() const override { return true; }

    bool IsColorSaved() const { return _colorSaved; }

private:
    bool* _destroyed;
};

Floats colorOf(const AGeometryItem& item) {
    const float* color = item.GetColor();
    return {color[0], color[1], color[2], color[3]};
}

void setColor(AGeometryItem& item, Floats color) {
    item.SetColor(color.data());
}

const Floats kFirst = {0.25F, 0.5F, 0.75F, 1.0F};
const Floats kSecond = {1.0F, 0.0F, 0.5F, 0.125F};

TEST(AGeometryItemTest, IsDestroyedThroughItsBase) {
    bool destroyed = false;
    const AGeometryItem* item = new HostItem(5, &destroyed);
    delete item;
    EXPECT_TRUE(destroyed);
}

TEST(AGeometryItemTest, IdIsTheOneOfItsConstructor) {
    for (const std::uint64_t id :
         {std::uint64_t{0}, std::uint64_t{5}, std::numeric_limits<std::uint64_t>::max()}) {
        EXPECT_EQ(HostItem(id).ID(), id);
    }
}

TEST(AGeometryItemTest, LeavesExtentsAndVisibilityToTheHost) {
    EXPECT_TRUE(std::is_abstract_v<AGeometryItem>);
}

TEST(AGeometryItemTest, ANewItemIsBlackWithAlphaTwoHundredFiftyFive) {
    // 255.0 although channels otherwise run from 0 to 1.
    EXPECT_EQ(colorOf(HostItem(5)), (Floats{0.0F, 0.0F, 0.0F, 255.0F}));
}

TEST(AGeometryItemTest, SetColorCopiesFourFloats) {
    HostItem item(5);
    Floats color = kFirst;
    item.SetColor(color.data());
    color.fill(9.0F);
    EXPECT_EQ(colorOf(item), kFirst);
}

TEST(AGeometryItemTest, SetColorStoresFloatsUnchecked) {
    HostItem item(5);
    const Floats color = {-1.0F, 1e30F, std::numeric_limits<float>::infinity(), 255.0F};
    setColor(item, color);
    EXPECT_EQ(colorOf(item), color);
}

TEST(AGeometryItemTest, SetColorOfAColorDividesByTwoHundredFiftyFive) {
    HostItem item(5);
    item.SetColor(RGBAColor(255, 0, 51, 102));
    EXPECT_EQ(colorOf(item), (Floats{1.0F, 0.0F, static_cast<float>(51 / 255.0),
                                     static_cast<float>(102 / 255.0)}));
}

TEST(AGeometryItemTest, GetColorPointsToTheStoredFloats) {
    HostItem item(5);
    const float* color = item.GetColor();
    setColor(item, kSecond);
    EXPECT_EQ(color[3], 0.125F);
    EXPECT_EQ(item.GetColor(), color);
}

TEST(AGeometryItemTest, GetColorBuildsAColorOfTheFloats) {
    HostItem item(5);
    setColor(item, {1.0F, 0.5F, -0.2F, 2.0F});
    RGBAColor color;
    item.GetColor(color);
    EXPECT_EQ(color, RGBAColor(255, 127, 0, 255));  // truncated and clamped
}

TEST(AGeometryItemTest, ANewItemsColorReadsAsOpaqueBlack) {
    HostItem item(5);
    RGBAColor color;
    item.GetColor(color);
    EXPECT_EQ(color, RGBAColor(0, 0, 0, 255));
}

TEST(AGeometryItemTest, RestoreColorWithoutASavedOneChangesNothing) {
    HostItem item(5);
    setColor(item, kFirst);
    item.RestoreColor();
    EXPECT_EQ(colorOf(item), kFirst);
}

TEST(AGeometryItemTest, RestoreColorBringsTheSavedColorBack) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    EXPECT_TRUE(item.IsColorSaved());
    setColor(item, kSecond);
    item.RestoreColor();
    EXPECT_EQ(colorOf(item), kFirst);
    EXPECT_FALSE(item.IsColorSaved());
}

TEST(AGeometryItemTest, SaveColorLeavesTheColor) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    EXPECT_EQ(colorOf(item), kFirst);
}

TEST(AGeometryItemTest, RestoreColorRestoresOnce) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    item.RestoreColor();
    setColor(item, kSecond);
    item.RestoreColor();
    EXPECT_EQ(colorOf(item), kSecond);
}

TEST(AGeometryItemTest, SavingTwiceLosesTheFirstColor) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    setColor(item, kSecond);  // such as a highlight
    item.SaveColor();
    item.RestoreColor();
    EXPECT_EQ(colorOf(item), kSecond);
}

TEST(AGeometryItemTest, CanBeSavedAgainAfterARestore) {
    HostItem item(5);
    item.SaveColor();
    item.RestoreColor();
    setColor(item, kFirst);
    item.SaveColor();
    setColor(item, kSecond);
    item.RestoreColor();
    EXPECT_EQ(colorOf(item), kFirst);
}

TEST(AGeometryItemTest, ToStringNamesTheBaseClassWhateverTheObjectIs) {
    HostItem item(18446744073709551615U);
    EXPECT_EQ(item.ToString(),
              std::string("[18446744073709551615] \"") + typeid(AGeometryItem).name() + "\"");
}

TEST(AGeometryItemTest, CopyHoldsIdColorAndSavedColor) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    setColor(item, kSecond);
    HostItem copy(item);
    item.RestoreColor();
    EXPECT_EQ(copy.ID(), 5U);
    EXPECT_EQ(colorOf(copy), kSecond);
    copy.RestoreColor();
    EXPECT_EQ(colorOf(copy), kFirst);
}

TEST(AGeometryItemTest, AssignmentTakesIdColorAndSavedColor) {
    HostItem item(5);
    setColor(item, kFirst);
    item.SaveColor();
    HostItem assigned(6);
    assigned = item;
    EXPECT_EQ(assigned.ID(), 5U);
    setColor(assigned, kSecond);
    assigned.RestoreColor();
    EXPECT_EQ(colorOf(assigned), kFirst);
}

}  // namespace
}  // namespace KesVizCore
