#include "reading/occ/PmiTextPlace.h"
#include "reading/part21/Placement.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

PmiBox boxAt(const Vector& low, const Vector& high) {
    PmiBox box;
    box.Add(low);
    box.Add(high);
    return box;
}

Annotation placed(PmiTextPlaces& places, const PmiBox& target) {
    Annotation annotation;
    annotation.text = "⌀ 5";
    places.Place(target, annotation);
    return annotation;
}

TEST(PmiTextPlaceTest, StandsOutsideOfTheModelBesideWhatItSpeaksOf) {
    PmiTextPlaces places(boxAt({0, 0, 0}, {100, 50, 20}));
    const Annotation annotation = placed(places, boxAt({90, 20, 5}, {100, 30, 15}));
    ASSERT_EQ(annotation.texts.size(), 1U);
    EXPECT_EQ(annotation.texts[0].text, "⌀ 5");
    EXPECT_GT(annotation.texts[0].position[0], 100);
    EXPECT_EQ(annotation.texts[0].position[1], 25);
    EXPECT_EQ(annotation.lines.size(), 1U);
}

TEST(PmiTextPlaceTest, IsReadableFromOutsideOnEverySide) {
    PmiTextPlaces places(boxAt({-10, -10, -10}, {10, 10, 10}));
    for (const Vector& out : {Vector{1, 0, 0}, Vector{-1, 0, 0}, Vector{0, 1, 0}, Vector{0, -1, 0},
                              Vector{0, 0, 1}, Vector{0, 0, -1}}) {
        const Annotation annotation = placed(places, boxAt(9 * out, 10 * out));
        const PlacedText& text = annotation.texts.at(0);
        EXPECT_EQ(cross(text.u, text.v), out);
        EXPECT_GT(dot(text.position, out), 10);
        ASSERT_TRUE(annotation.plane);
        EXPECT_EQ((*annotation.plane)[1], text.u);
    }
}

TEST(PmiTextPlaceTest, TextsAtOnePlaceAreStacked) {
    PmiTextPlaces places(boxAt({-10, -10, -10}, {10, 10, 10}));
    const PmiBox target = boxAt({9, -1, -1}, {10, 1, 1});
    const Annotation first = placed(places, target);
    const Annotation second = placed(places, target);
    const Vector step = second.texts[0].position - first.texts[0].position;
    EXPECT_GT(dot(step, first.texts[0].v), first.texts[0].height);
    EXPECT_TRUE(second.lines.empty());
}

TEST(PmiTextPlaceTest, NeedsNoModel) {
    PmiTextPlaces places{PmiBox()};
    EXPECT_EQ(placed(places, PmiBox()).texts.size(), 1U);
}

}  // namespace
}  // namespace kesview
