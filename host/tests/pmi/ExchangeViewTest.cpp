#include "reading/part21/ExchangePmi.h"
#include "reading/part21/ExchangeViews.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kesview {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A camera at (10, 20, 30) whose axis is the model's x and whose upward direction is its z.
std::string camera(const std::string& projectionPoint, const std::string& planeDistance,
                   const std::string& window = "(-4.,-3.,0.)", const char* kind = "PARALLEL") {
    return "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.));"
           "#2=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#1))REPRESENTATION_CONTEXT('',''));"
           "#10=CARTESIAN_POINT('',(10.,20.,30.));#11=DIRECTION('',(1.,0.,0.));"
           "#12=DIRECTION('',(0.,1.,0.));#13=AXIS2_PLACEMENT_3D('',#10,#11,#12);"
           "#14=CARTESIAN_POINT('',(" +
           projectionPoint + "));#15=CARTESIAN_POINT('',(" + window.substr(1, window.size() - 2) +
           "));#16=AXIS2_PLACEMENT_3D('',#15,#17,#18);#17=DIRECTION('',(0.,0.,1.));"
           "#18=DIRECTION('',(1.,0.,0.));#19=PLANAR_BOX('',8.,6.,#16);#20=VIEW_VOLUME(." +
           kind + ".,#14," + planeDistance +
           ",0.,.F.,0.,.F.,.F.,#19);#21=CAMERA_MODEL_D3('front',#13,#20);"
           "#22=DRAUGHTING_MODEL('front',(#21),#2);";
}

SavedView onlyView(const std::string& text) {
    const auto views = readViews(ExchangeFile::FromText(text), 1);
    EXPECT_EQ(views.size(), 1U);
    return views.empty() ? SavedView() : views.front().view;
}

TEST(ExchangeViewsTest, LooksAlongTheAxisWhereTheViewPlaneLiesAhead) {
    const SavedView view = onlyView(camera("0.,0.,0.", "50."));
    EXPECT_EQ(view.name, "front");
    EXPECT_EQ(view.key, "#21");
    EXPECT_EQ(view.eye, (Vector{100, 200, 300}));
    EXPECT_EQ(view.target, (Vector{600, 200, 300}));
    EXPECT_EQ(view.up, (Vector{0, 0, 1}));
    EXPECT_EQ(view.width, 80.0);
    EXPECT_EQ(view.height, 60.0);
    EXPECT_FALSE(view.perspective);
}

TEST(ExchangeViewsTest, LooksAgainstTheAxisWhereTheEyeStandsAheadOfTheViewPlane) {
    const SavedView view = onlyView(camera("0.,0.,40.", "0."));
    EXPECT_EQ(view.eye, (Vector{500, 200, 300}));
    EXPECT_EQ(view.target, (Vector{100, 200, 300}));
}

TEST(ExchangeViewsTest, AProjectionPointMayBeToldInTheModel) {
    const SavedView view = onlyView(camera("50.,20.,30.", "0."));
    EXPECT_EQ(view.eye, (Vector{500, 200, 300}));
    EXPECT_EQ(view.target, (Vector{100, 200, 300}));
}

TEST(ExchangeViewsTest, AWindowBesideTheAxisMovesTheCamera) {
    const SavedView view = onlyView(camera("0.,0.,0.", "50.", "(-3.,-3.,0.)"));
    EXPECT_EQ(view.eye, (Vector{100, 210, 300}));  // one centimetre along the frame's x
    EXPECT_EQ(view.target, (Vector{600, 210, 300}));
}

TEST(ExchangeViewsTest, AWindowToldInTheModelDoesNot) {
    const SavedView view = onlyView(camera("50.,20.,30.", "0.", "(6.,17.,0.)"));
    EXPECT_EQ(view.target, (Vector{100, 200, 300}));
}

TEST(ExchangeViewsTest, PerspectiveCamerasHaveAnAngle) {
    const SavedView view = onlyView(camera("0.,0.,0.", "3.", "(-4.,-3.,0.)", "CENTRAL"));
    EXPECT_TRUE(view.perspective);
    EXPECT_NEAR(view.viewAngle, 90, 1e-9);
}

TEST(ExchangeViewsTest, KeepsTheSideOfAClippingPlaneThatIsAwayFromTheEye) {
    for (const char* axis : {"1.,0.,0.", "-1.,0.,0."}) {
        std::string text = camera("0.,0.,0.", "50.");
        text +=
            "#30=CAMERA_MODEL_D3_MULTI_CLIPPING('cut',#13,#20,(#31));#31=PLANE('',#32);"
            "#32=AXIS2_PLACEMENT_3D('',#10,#33,$);#33=DIRECTION('',(" +
            std::string(axis) + "));";
        const auto views = readViews(ExchangeFile::FromText(text), 10);
        ASSERT_EQ(views.size(), 2U);
        ASSERT_TRUE(views[1].view.clipping);
        EXPECT_EQ(views[1].view.clipping->point, (Vector{100, 200, 300}));
        EXPECT_EQ(views[1].view.clipping->normal, (Vector{1, 0, 0})) << axis;
    }
}

TEST(ExchangeViewsTest, RepeatedCamerasAreOneThatShowsWhatAnyShows) {
    const auto views =
        readViews(ExchangeFile::FromText(camera("0.,0.,0.", "50.") +
                                         "#31=CAMERA_MODEL_D3('front',#13,#20);"
                                         "#32=DRAUGHTING_MODEL('front',(#31,#77),#2);"
                                         "#33=CAMERA_MODEL_D3('other',#13,#20);"),
                  10);
    ASSERT_EQ(views.size(), 2U);
    EXPECT_THAT(views[0].items, ElementsAre(21U, 31U, 77U));
    EXPECT_EQ(views[1].view.name, "other");
}

TEST(ExchangeViewsTest, AViewShowsTheAnnotationsOfItsModel) {
    const std::string drawing =
        "#40=POLYLINE('',(#10,#14));#41=ANNOTATION_OCCURRENCE('note',(),#40);"
        "#42=ANNOTATION_OCCURRENCE('note',(),#40);#43=ANNOTATION_PLANE('',(),#44,(#42));"
        "#44=PLANE('',#13);#45=ANNOTATION_OCCURRENCE('note',(),#40);";
    const ExchangePmi some =
        readExchangePmi(ExchangeFile::FromText(camera("0.,0.,0.", "50.") + drawing +
                                               "#50=DRAUGHTING_MODEL('front',(#21,#41,#43),#2);"),
                        1);
    ASSERT_EQ(some.views.size(), 1U);
    EXPECT_THAT(some.views[0].view.members, ElementsAre("#41", "#42"));
    EXPECT_FALSE(some.views[0].view.showsAll);
    const ExchangePmi none =
        readExchangePmi(ExchangeFile::FromText(camera("0.,0.,0.", "50.") + drawing), 1);
    EXPECT_THAT(none.views.at(0).view.members, IsEmpty());
    EXPECT_TRUE(none.views.at(0).view.showsAll);
}

TEST(ExchangeViewsTest, ACameraWithoutItsPlaceIsToldOf) {
    const ExchangePmi pmi =
        readExchangePmi(ExchangeFile::FromText("#1=CAMERA_MODEL_D3('x',#2,#3);"), 1);
    EXPECT_THAT(pmi.views, IsEmpty());
    ASSERT_EQ(pmi.findings.size(), 1U);
    EXPECT_EQ(pmi.findings[0].code, "view.unreadable");
}

TEST(ExchangeViewsTest, ClippingsThatHoldEachOtherCountOnce) {
    std::string again;
    for (int i = 0; i < 50; ++i) {
        again += "#31,";
    }
    const auto views =
        readViews(ExchangeFile::FromText(camera("0.,0.,0.", "50.") +
                                         "#30=CAMERA_MODEL_D3_MULTI_CLIPPING('cut',#13,#20,(#31));"
                                         "#31=CAMERA_MODEL_D3_MULTI_CLIPPING_UNION('',(" +
                                         again + "#32));#32=PLANE('',#13);"),
                  1);
    ASSERT_EQ(views.size(), 2U);
    EXPECT_EQ(views[1].planeCount, 1U);
}

}  // namespace
}  // namespace kesview
