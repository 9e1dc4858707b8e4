#include "CommandKit.h"
#include "commands/Console.h"
#include "commands/Errors.h"
#include "commands/SceneSetup.h"
#include "commands/Selectors.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

namespace kesview {
namespace {

/// A plane by what it keeps.
bool keeps(const SavedView::Plane& plane, const Vector& point) {
    double side = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        side += plane.normal[axis] * (point[axis] - plane.point[axis]);
    }
    return side >= 0;
}

TEST(ParseSectionTest, AnAxisKeepsSmallerCoordinates) {
    const SavedView::Plane plane = parseSection("y=-5.5");
    EXPECT_TRUE(keeps(plane, {100, -6, 100}));
    EXPECT_FALSE(keeps(plane, {-100, -5, -100}));
}

TEST(ParseSectionTest, FourNumbersAreNormalAndOffset) {
    const SavedView::Plane plane = parseSection("0,3,4,10");  // 3 y + 4 z <= 10
    EXPECT_TRUE(keeps(plane, {7, 2, 0.9}));
    EXPECT_FALSE(keeps(plane, {7, 2, 1.1}));
    EXPECT_NEAR(std::hypot(plane.normal[0], plane.normal[1], plane.normal[2]), 1, 1e-12);
}

TEST(ParseSectionTest, OtherFormsAreRefused) {
    for (const char* text : {"x", "x=", "w=1", "x=1,2", "1,2,3", "0,0,0,1", "1,2,3,4,5", "x=nan",
                             "x=inf", "1,b,3,4"}) {
        EXPECT_THROW(parseSection(text), UsageError) << text;
    }
}

TEST(ParseBackgroundTest, NamesNumbersAndGradients) {
    EXPECT_EQ(parseBackground("black").bottom, (Color{0, 0, 0, 255}));
    EXPECT_EQ(parseBackground("#8040ff").bottom, (Color{128, 64, 255, 255}));
    EXPECT_FALSE(parseBackground("white").top.has_value());
    EXPECT_EQ(parseBackground("white,#010203").top, (Color{1, 2, 3, 255}));
    for (const char* text :
         {"", "pink", "#12345", "#12345g", "white,", "a,b,c", "white,black,grey"}) {
        EXPECT_THROW(parseBackground(text), UsageError) << text;
    }
}

class SetUpSceneTest : public testing::Test {
protected:
    viz::RenderId path(const std::string& selector) const {
        return select(_session.Index(), selector).nodes.at(0).renderId;
    }
    bool shows(const std::string& selector) { return _session.Adapter().IsVisible(path(selector)); }

    std::ostringstream _out;
    std::ostringstream _err;
    Streams _streams{_out, _err};
    Console _console{_streams, CommonOptions()};
    Session _session{support::annotatedMachine(), _console};
    SceneOptions _options;
};

TEST_F(SetUpSceneTest, PicturesAreAntialiased) {
    setUpScene(_options, _session);
    EXPECT_EQ(_session.View().MakePicture().samples, 8);
}

TEST_F(SetUpSceneTest, WithoutAViewAllAnnotationsAreShown) {
    EXPECT_EQ(setUpScene(_options, _session), "iso");
    EXPECT_TRUE(shows("#600"));
    EXPECT_TRUE(shows("#610"));
    EXPECT_FALSE(shows("#620"));  // the file hides it
}

TEST_F(SetUpSceneTest, ASavedViewShowsItsMembers) {
    _options.view = "Front";
    EXPECT_EQ(setUpScene(_options, _session), "Front");
    EXPECT_TRUE(shows("#600"));
    EXPECT_FALSE(shows("#610"));
    const Camera& camera = _session.View().GetCamera();
    EXPECT_NEAR(camera.target[2], 2, 1e-6);
    EXPECT_NEAR(camera.height, 100, 1e-3);
}

TEST_F(SetUpSceneTest, PmiNoneShowsNone) {
    _options.pmi = ShownPmi::None;
    setUpScene(_options, _session);
    EXPECT_FALSE(shows("#600"));
}

TEST_F(SetUpSceneTest, PmiAllShowsMoreThanTheView) {
    _options.view = "Front";
    _options.pmi = ShownPmi::All;
    setUpScene(_options, _session);
    EXPECT_TRUE(shows("#610"));
}

TEST_F(SetUpSceneTest, PmiOfNoViewIsRefused) {
    _options.pmi = ShownPmi::View;
    EXPECT_THROW(setUpScene(_options, _session), UsageError);
}

TEST_F(SetUpSceneTest, HidingAnInstanceHidesNoOtherUseOfItsPart) {
    _options.hide = {"/Machine/Pair:2"};
    setUpScene(_options, _session);
    EXPECT_FALSE(shows("1/50/32/21"));
    EXPECT_TRUE(shows("1/50/31/21"));
}

TEST_F(SetUpSceneTest, IsolatingShowsNothingElse) {
    _options.isolate = {"1/50/31/22"};
    setUpScene(_options, _session);
    EXPECT_TRUE(shows("1/50/31/22"));
    EXPECT_FALSE(shows("1/50/31/21"));
    EXPECT_FALSE(shows("#600"));
}

TEST_F(SetUpSceneTest, IsolatedPartsKeepAnnotationsThatWereAskedFor) {
    _options.isolate = {"1/50/31/22"};
    _options.pmi = ShownPmi::All;
    setUpScene(_options, _session);
    EXPECT_TRUE(shows("#600"));
    EXPECT_FALSE(shows("1/50/31/21"));
}

TEST_F(SetUpSceneTest, HighlightingMarksWhatIsSelected) {
    _options.highlight = {"1/50/31/22"};
    setUpScene(_options, _session);
    EXPECT_TRUE(_session.Adapter().IsHighlighted(path("1/50/31/22")));
    EXPECT_FALSE(_session.Adapter().IsHighlighted(path("1/50/31/21")));
}

TEST_F(SetUpSceneTest, TheViewsOwnSectionGivesWayToTheOneAskedFor) {
    _options.section = "z=3";
    setUpScene(_options, _session);
    ASSERT_TRUE(_session.Adapter().GetClipping().has_value());
    EXPECT_FALSE(keeps(*_session.Adapter().GetClipping(), {0, 0, 4}));
    _options.section = "none";
    setUpScene(_options, _session);
    EXPECT_FALSE(_session.Adapter().GetClipping().has_value());
}

TEST_F(SetUpSceneTest, UnknownViewsAndPartsAreRefused) {
    _options.view = "Frnt";
    EXPECT_THROW(setUpScene(_options, _session), UsageError);
    _options.view = "top";
    _options.hide = {"nothing of that name"};
    EXPECT_THROW(setUpScene(_options, _session), UsageError);
}

}  // namespace
}  // namespace kesview
