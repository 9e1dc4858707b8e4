#include "commands/ReadableColors.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

Picture pictureWith(const Color& background, const Color& annotation) {
    Picture picture;
    picture.background = background;
    picture.annotationLines.resize(1);
    picture.annotationLines[0].color = annotation;
    return picture;
}

TEST(ReadableColorsTest, WhiteOnWhiteBecomesDark) {
    Picture picture = pictureWith({255, 255, 255, 255}, {250, 255, 255, 128});
    EXPECT_EQ(makeAnnotationsReadable(picture), 1U);
    EXPECT_EQ(picture.annotationLines[0].color, (Color{20, 60, 140, 128}));
}

TEST(ReadableColorsTest, BlackOnBlackBecomesWhite) {
    Picture picture = pictureWith({0, 0, 0, 255}, {10, 10, 10, 255});
    makeAnnotationsReadable(picture);
    EXPECT_EQ(picture.annotationLines[0].color, (Color{255, 255, 255, 255}));
}

TEST(ReadableColorsTest, ColoursThatCanBeSeenStay) {
    Picture picture = pictureWith({255, 255, 255, 255}, {255, 0, 0, 255});
    EXPECT_EQ(makeAnnotationsReadable(picture), 0U);
    EXPECT_EQ(picture.annotationLines[0].color, (Color{255, 0, 0, 255}));
}

TEST(ReadableColorsTest, BothEndsOfAGradientCount) {
    Picture picture = pictureWith({0, 0, 0, 255}, {255, 255, 255, 255});
    EXPECT_EQ(makeAnnotationsReadable(picture), 0U);
    picture.backgroundTop = Color{255, 255, 255, 255};
    EXPECT_EQ(makeAnnotationsReadable(picture), 1U);
}

TEST(ReadableColorsTest, TheModelKeepsItsColours) {
    Picture picture;
    picture.lines.resize(1);
    picture.lines[0].color = {255, 255, 255, 255};
    EXPECT_EQ(makeAnnotationsReadable(picture), 0U);
    EXPECT_EQ(picture.lines[0].color, (Color{255, 255, 255, 255}));
}

}  // namespace
}  // namespace kesview
