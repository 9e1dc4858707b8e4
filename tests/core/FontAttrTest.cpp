#include <KesVizCore/core/FontAttr.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace KesVizCore {
namespace {

TEST(FontAttrTest, EachOfTheThreeIsOneByDefault) {
    const FontAttr font;
    EXPECT_EQ(font.FontSize, 1.0F);
    EXPECT_EQ(font.SpacingFactor, 1.0F);
    EXPECT_EQ(font.WidthScaling, 1.0F);
}

TEST(FontAttrTest, IsThreeFloatsSizeFirstThenSpacingThenWidth) {
    static_assert(std::is_standard_layout_v<FontAttr>);
    EXPECT_EQ(sizeof(FontAttr), 3 * sizeof(float));
    EXPECT_EQ(offsetof(FontAttr, FontSize), 0U);
    EXPECT_EQ(offsetof(FontAttr, SpacingFactor), sizeof(float));
    EXPECT_EQ(offsetof(FontAttr, WidthScaling), 2 * sizeof(float));
}

TEST(FontAttrTest, CopiesAllThree) {
    FontAttr font;
    font.FontSize = 2.5F;
    font.SpacingFactor = -3.0F;
    font.WidthScaling = 0.0F;
    const FontAttr copy = font;
    EXPECT_EQ(copy.FontSize, 2.5F);
    EXPECT_EQ(copy.SpacingFactor, -3.0F);
    EXPECT_EQ(copy.WidthScaling, 0.0F);
}

}  // namespace
}  // namespace KesVizCore
