#include "drawing/Drawing.h"
#include "drawing/Pictures.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

namespace kesview {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const DrawError& error) {
        return error.what();
    }
    return "no error";
}

std::string drawErrorOf(const Picture& picture) {
    return errorOf([&] { makeDrawing()->Draw(picture); });
}

/// Ends this process with what makeDrawing says, for tests in a child.
[[noreturn]] void tellAndExit() {
    const std::string error = errorOf([] { makeDrawing(); });
    std::cerr << error << std::endl;
    std::exit(error.find('\n') == std::string::npos ? 6 : 7);
}

TEST(DrawingErrorsDeathTest, WithoutADriverTheErrorTellsWhatToInstall) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("__EGL_VENDOR_LIBRARY_DIRS", "/nowhere", 1);
            tellAndExit();
        },
        testing::ExitedWithCode(6),
        "Drawing needs libegl-mesa0 and libgl1-mesa-dri: apt-get install libegl-mesa0 "
        "libgl1-mesa-dri");
}

TEST(DrawingErrorsDeathTest, AMissingModuleIsNamedWithTheRemedy) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("KESVIEW_DRAWING_MODULE", "/nowhere/kesview_vtk.so", 1);
            tellAndExit();
        },
        testing::ExitedWithCode(6), "is missing, /nowhere/kesview_vtk.so: build the target");
}

TEST(DrawingErrorsDeathTest, AModuleThatCannotBeLoadedSaysWhy) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("KESVIEW_DRAWING_MODULE", "/etc/passwd", 1);
            tellAndExit();
        },
        testing::ExitedWithCode(6), "cannot be loaded, .*Drawing needs VTK 9.1.*apt-get install");
}

TEST(DrawingErrorsTest, ALibraryThatIsNoModuleOfOursIsRefused) {
    const std::string error = errorOf([] {
        setenv("KESVIEW_DRAWING_MODULE", "libm.so.6", 1);
        const support::TemporaryFolder folder;
        const std::string link = folder.File("kesview_vtk.so");
        std::filesystem::create_symlink("/lib/x86_64-linux-gnu/libm.so.6", link);
        setenv("KESVIEW_DRAWING_MODULE", link.c_str(), 1);
        makeDrawing();
    });
    unsetenv("KESVIEW_DRAWING_MODULE");
    EXPECT_THAT(error, HasSubstr("of another version"));
}

TEST(DrawingErrorsTest, AMissingModuleDoesNotSpoilTheNextTry) {
    setenv("KESVIEW_DRAWING_MODULE", "/nowhere", 1);
    EXPECT_THROW(makeDrawing(), DrawError);
    setenv("KESVIEW_DRAWING_MODULE", KESVIEW_MODULE, 1);
    EXPECT_NO_THROW(makeDrawing());
    unsetenv("KESVIEW_DRAWING_MODULE");
}

TEST(DrawingErrorsTest, ASizeThatCannotBeDrawnIsTold) {
    Picture picture = whiteGround();
    picture.width = 0;
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("0 x 100 pixels cannot be drawn"));
    picture.width = 1'000'000;
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("each side must be 1 to "));
}

TEST(DrawingErrorsTest, ACameraThatSeesNothingIsTold) {
    Picture picture = whiteGround();
    picture.camera.target = picture.camera.eye;
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("eye and target are one point"));
    picture = whiteGround();
    picture.camera.height = 0;
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("sees no height"));
    picture = whiteGround();
    picture.camera.up = {0, 0, 1};
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("up is its line of sight"));
    picture.camera.up = {NAN, 0, 0};
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("cannot be drawn"));
}

TEST(DrawingErrorsTest, BatchesThatDoNotFitTogetherAreTold) {
    Picture picture = whiteGround();
    picture.triangles = {rectangle(0, 0, 1, 1, 0, red)};
    picture.triangles[0].triangles[2] = 4;
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("none of its points"));
    picture.triangles = {rectangle(0, 0, 1, 1, 0, red)};
    picture.triangles[0].normals = {0, 0, 1};
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("one normal for each point"));
    picture.triangles = {rectangle(0, 0, 1, 1, 0, {9, 9, 9, 9})};
    picture.triangles[0].triangles.pop_back();
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("no triples"));
    picture.triangles.clear();
    picture.lines = {line({0, 0, 0}, {1, 1, 1}, red, 1)};
    picture.lines[0].dashed = true;
    picture.lines[0].starts = {0, 3};
    EXPECT_THAT(drawErrorOf(picture), HasSubstr("does not start among its points"));
}

TEST(DrawingErrorsTest, ADrawingCanBeUsedAfterAnError) {
    const std::unique_ptr<Drawing> drawing = makeDrawing();
    Picture picture = whiteGround();
    picture.height = 0;
    EXPECT_THROW(drawing->Draw(picture), DrawError);
    picture = whiteGround();
    picture.triangles.push_back(rectangle(0, 0, 10, 10, 0, red));
    EXPECT_EQ(countInk(drawing->Draw(picture)), 100);
}

TEST(DrawingErrorsTest, NothingIsPrinted) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    makeDrawing()->Draw(whiteGround());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace kesview
