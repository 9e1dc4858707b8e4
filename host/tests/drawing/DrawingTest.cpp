#include "drawing/Drawing.h"
#include "drawing/Pictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>

namespace kesview {
namespace {

/// One drawing for all tests of a process: contexts are dear, and are meant to be used again.
class DrawingTest : public testing::Test {
protected:
    static void SetUpTestSuite() { _drawing = makeDrawing(); }
    static void TearDownTestSuite() { _drawing.reset(); }
    static Image draw(const Picture& picture) { return _drawing->Draw(picture); }

private:
    static std::unique_ptr<Drawing> _drawing;
};

std::unique_ptr<Drawing> DrawingTest::_drawing;

TriangleBatch lit(TriangleBatch batch, float nx, float ny, float nz) {
    batch.lit = true;
    for (std::size_t i = 0; i < batch.points.size(); i += 3)
        batch.normals.insert(batch.normals.end(), {nx, ny, nz});
    return batch;
}

TEST_F(DrawingTest, AnEmptyPictureIsItsBackground) {
    Picture picture = whiteGround();
    picture.background = {12, 34, 56, 255};
    const Image image = draw(picture);
    ASSERT_EQ(image.width, 200);
    ASSERT_EQ(image.height, 100);
    ASSERT_EQ(image.pixels.size(), std::size_t(3 * 200 * 100));
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x)
            ASSERT_EQ(pixelAt(image, x, y), (Color{12, 34, 56, 255})) << x << ' ' << y;
    }
}

TEST_F(DrawingTest, AGradientRunsFromTheLowerEndUp) {
    Picture picture = whiteGround();
    picture.background = {0, 0, 0, 255};
    picture.backgroundTop = Color{200, 100, 0, 255};
    const Image image = draw(picture);
    for (int y = 0; y < 100; ++y) {
        const double part = (99.5 - y) / 100;
        EXPECT_NEAR(pixelAt(image, 77, y)[0], 200 * part, 2) << y;
        EXPECT_NEAR(pixelAt(image, 77, y)[1], 100 * part, 2) << y;
    }
}

TEST_F(DrawingTest, ARectangleCoversItsMillimetresAndNothingElse) {
    Picture picture = whiteGround();
    picture.triangles.push_back(rectangle(-30, -10, 20, 40, 0, red));
    const Image image = draw(picture);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) {
            const bool inside = x >= 70 && x < 120 && y >= 10 && y < 60;
            ASSERT_EQ(pixelAt(image, x, y), inside ? red : white) << x << ' ' << y;
        }
    }
}

TEST_F(DrawingTest, TheScaleOfAParallelCameraIsItsHeight) {
    Picture picture = whiteGround();
    picture.camera.height = 25;  // 4 pixels for each millimetre
    picture.triangles.push_back(rectangle(0, 0, 10, 5, 0, red));
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image), 40 * 20);
    EXPECT_EQ(countInk(image, 100, 30, 140, 50), 40 * 20);
}

TEST_F(DrawingTest, AParallelCameraShowsWhatLiesBehindItsEye) {
    Picture picture = whiteGround();
    picture.triangles.push_back(rectangle(0, 0, 10, 10, 80, red));
    picture.triangles.push_back(rectangle(0, 0, 50, 10, -5000, blue));
    const Image image = draw(picture);
    EXPECT_EQ(pixelAt(image, 105, 45), red);
    EXPECT_EQ(pixelAt(image, 120, 45), blue);
}

TEST_F(DrawingTest, APerspectiveCameraShowsItsHeightAtTheTargetAndLessNearer) {
    Picture picture = whiteGround();
    picture.camera.perspective = true;
    picture.triangles.push_back(rectangle(-20, -10, 20, 10, 0, red));
    EXPECT_EQ(countInk(draw(picture)), 40 * 20);
    picture.triangles[0] = rectangle(-20, -10, 20, 10, 25, red);  // halfway to the eye
    EXPECT_EQ(countInk(draw(picture)), 80 * 40);
}

TEST_F(DrawingTest, TheCameraStandsInTheWorldAndPointsAreRelativeToTheOrigin) {
    Picture picture = whiteGround();
    picture.origin = {1e7, -2e7, 3e6};
    picture.camera.eye = {1e7, -2e7, 3e6 + 50};
    picture.camera.target = {1e7, -2e7, 3e6};
    picture.clipping = SavedView::Plane{{1e7 + 5, -2e7, 3e6}, {1, 0, 0}};
    picture.triangles.push_back(rectangle(0, 0, 10, 10, 0, red));
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image), 50);
    EXPECT_EQ(countInk(image, 105, 40, 110, 50), 50);
}

TEST_F(DrawingTest, TheNearerSurfaceHidesTheFarther) {
    Picture picture = whiteGround();
    picture.triangles.push_back(rectangle(-10, -10, 10, 10, 1, red));
    picture.triangles.push_back(rectangle(-20, -20, 20, 20, 0, blue));
    const Image image = draw(picture);
    EXPECT_EQ(pixelAt(image, 100, 50), red);
    EXPECT_EQ(pixelAt(image, 115, 50), blue);
}

TEST_F(DrawingTest, ClippingKeepsTheSideToWhichItsNormalPoints) {
    Picture picture = whiteGround();
    picture.clipping = SavedView::Plane{{0, 0, 0}, {-1, 0, 0}};
    picture.triangles.push_back(rectangle(-30, -10, 30, 10, 0, red));
    picture.lines.push_back(line({-50, 30.5, 0}, {50, 30.5, 0}, black, 1));
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image, 0, 0, 100, 100), 30 * 20 + 50);
    EXPECT_EQ(countInk(image, 100, 0, 200, 100), 0);
}

TEST_F(DrawingTest, ClippingSparesAnnotationsUnlessToldSo) {
    Picture picture = whiteGround();
    picture.clipping = SavedView::Plane{{0, 0, 0}, {-1, 0, 0}};
    picture.annotationTriangles.push_back(rectangle(10, -10, 30, 10, 0, red));
    picture.annotationLines.push_back(line({10, 30.5, 0}, {50, 30.5, 0}, black, 1));
    EXPECT_EQ(countInk(draw(picture)), 20 * 20 + 40);
    picture.clipsAnnotations = true;
    EXPECT_EQ(countInk(draw(picture)), 0);
}

TEST_F(DrawingTest, TranslucentMixesWithWhatIsBehindIt) {
    Picture picture = whiteGround();
    picture.triangles.push_back(rectangle(-20, -20, 20, 20, 5, {255, 0, 0, 102}));  // 40 %
    picture.triangles.push_back(rectangle(-10, -10, 10, 10, 0, blue));
    picture.triangles.push_back(rectangle(10, -10, 20, 10, 9, green));
    const Image image = draw(picture);
    EXPECT_NEAR(pixelAt(image, 100, 50)[0], 102, 1);
    EXPECT_NEAR(pixelAt(image, 100, 50)[2], 153, 1);
    EXPECT_NEAR(pixelAt(image, 100, 35)[1], 153, 1);  // over the white ground
    EXPECT_EQ(pixelAt(image, 115, 50), green);        // in front
}

TEST_F(DrawingTest, TranslucentLayersMixFromTheFarthestWhateverTheirOrder) {
    Picture picture = whiteGround();
    const TriangleBatch far = rectangle(-20, -20, 20, 20, 0, {255, 0, 0, 128});
    const TriangleBatch near = rectangle(-20, -20, 20, 20, 5, {0, 0, 255, 128});
    picture.triangles = {far, near};
    const Color pixel = pixelAt(draw(picture), 100, 50);
    EXPECT_NEAR(pixel[0], 127, 2);  // white halved, red added, halved again
    EXPECT_NEAR(pixel[1], 63, 2);
    EXPECT_NEAR(pixel[2], 191, 2);
    picture.triangles = {near, far};
    EXPECT_EQ(pixelAt(draw(picture), 100, 50), pixel);
}

TEST_F(DrawingTest, ALineIsWhereItShouldBeAndAsWide) {
    Picture picture = whiteGround();
    picture.lines.push_back(line({-40, 20.5, 0}, {40, 20.5, 0}, black, 1));
    picture.lines.push_back(line({-40, -20.5, 0}, {40, -20.5, 0}, blue, 5));
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image, 60, 29, 140, 30), 80);
    EXPECT_EQ(countInk(image, 0, 0, 200, 50), 80);
    EXPECT_EQ(countInk(image, 60, 68, 140, 73), 80 * 5);
    EXPECT_EQ(countInk(image, 0, 50, 200, 100), 80 * 5);
}

TEST_F(DrawingTest, NoThinLineIsLostWhereverItRunsBetweenPixels) {
    constexpr int steps = 80;
    constexpr int count = 9;
    int lost = 0;
    for (int step = -steps; step < steps; ++step) {
        Picture picture = whiteGround();
        picture.samples = 8;
        for (int i = 0; i < count; ++i) {
            const double x = 16 * i - 68 + double(step) / steps + 0.001;
            picture.lines.push_back(line({x, -10.3, 0}, {x, 10.4, 0}, black, 1));
        }
        const Image image = draw(picture);
        for (int i = 0; i < count; ++i)
            lost += countInk(image, 16 * i + 27, 0, 16 * i + 37, 100) < 20 ? 1 : 0;
    }
    EXPECT_EQ(lost, 0);
}

TEST_F(DrawingTest, PolylinesOfABatchAreNotJoined) {
    Picture picture = whiteGround();
    LineBatch lines = line({-40, 0.5, 0}, {-20, 0.5, 0}, black, 1);
    lines.points.insert(lines.points.end(), {20, 0.5, 0, 40, 0.5, 0});
    lines.starts = {0, 2};
    picture.lines.push_back(lines);
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image), 40);
    EXPECT_EQ(countInk(image, 80, 0, 120, 100), 0);
}

TEST_F(DrawingTest, ADashedLineHasGapsOfTheSameLengthAtEveryAngle) {
    Picture picture = whiteGround();
    picture.lines.push_back(line({-50, 0.5, 0}, {50, 0.5, 0}, black, 1));
    picture.lines[0].dashed = true;
    EXPECT_NEAR(countInk(draw(picture)), 60, 2);                            // 6 of every 10
    picture.lines[0] = line({-50, 0.5, 1000}, {50, 0.5, -1000}, black, 1);  // very oblique
    picture.lines[0].dashed = true;
    EXPECT_NEAR(countInk(draw(picture)), 60, 2);
}

TEST_F(DrawingTest, PointsAreSquaresOfTheirSize) {
    Picture picture = whiteGround();
    PointBatch points;
    points.size = 6;
    points.points = {-50, 0, 0, 50, 0, 0};
    picture.points.push_back(points);
    const Image image = draw(picture);
    EXPECT_EQ(countInk(image), 2 * 36);
    EXPECT_EQ(countInk(image, 47, 47, 53, 53), 36);
}

TEST_F(DrawingTest, EdgesAndAnnotationsLieOverTheFacesThatHoldThem) {
    Picture picture = whiteGround();
    const double c = std::sqrt(0.5);
    picture.camera.eye = {0, -50, 50};
    picture.camera.up = {0, c, c};
    picture.triangles.push_back(lit(rectangle(-60, -60, 60, 60, 0, red), 0, 0, 1));
    picture.lines.push_back(line({-40, 20, 0}, {40, 20, 0}, blue, 1));
    picture.annotationTriangles.push_back(rectangle(-40, -20, 40, -10, 0, green));
    const Image image = draw(picture);
    int blues = 0;
    int greens = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) {
            blues += pixelAt(image, x, y) == blue;
            greens += pixelAt(image, x, y) == green;
        }
    }
    EXPECT_EQ(blues, 80);
    EXPECT_NEAR(greens, 80 * 10 * c, 80);
}

TEST_F(DrawingTest, BothSidesOfASurfaceAreLitAlikeHoweverItIsTurned) {
    Picture picture = whiteGround();
    TriangleBatch front = lit(rectangle(-80, -10, -50, 10, 0, red), 0, 0, 1);
    TriangleBatch back = lit(rectangle(-40, -10, -10, 10, 0, red), 0, 0, -1);
    back.triangles = {0, 2, 1, 0, 3, 2};
    TriangleBatch contradiction = lit(rectangle(10, -10, 40, 10, 0, red), 0, 0, -1);
    TriangleBatch mirrored = lit(rectangle(50, -10, 80, 10, 0, red), 0, 0, 1);
    mirrored.triangles = {0, 2, 1, 0, 3, 2};
    picture.triangles = {front, back, contradiction, mirrored};
    for (const bool perspective : {false, true}) {
        picture.camera.perspective = perspective;
        const Image image = draw(picture);
        EXPECT_GT(pixelAt(image, 35, 50)[0], 200);
        for (const int x : {75, 125, 165})
            EXPECT_NEAR(pixelAt(image, x, 50)[0], pixelAt(image, 35, 50)[0], 12) << x;
    }
}

TEST_F(DrawingTest, ASurfaceWithoutNormalsIsLitAsFlat) {
    Picture picture = whiteGround();
    TriangleBatch flat = rectangle(-60, -10, -10, 10, 0, red);
    flat.lit = true;
    picture.triangles = {flat, lit(rectangle(10, -10, 60, 10, 0, red), 0, 0, 1)};
    const Image image = draw(picture);
    EXPECT_NEAR(pixelAt(image, 60, 50)[0], pixelAt(image, 140, 50)[0], 1);
}

TEST_F(DrawingTest, SurfacesThatTurnAwayAreDarker) {
    Picture picture = whiteGround();
    const float c = std::sqrt(0.5F);
    picture.triangles.push_back(lit(rectangle(-60, -10, -10, 10, 0, red), 0, 0, 1));
    picture.triangles.push_back(lit(rectangle(10, -10, 60, 10, 0, red), c, -c, 0));
    const Image image = draw(picture);
    EXPECT_LT(pixelAt(image, 140, 50)[0], pixelAt(image, 60, 50)[0] - 50);
}

TEST_F(DrawingTest, ManySamplesSmoothASlantedEdge) {
    Picture picture = whiteGround();
    TriangleBatch triangle = rectangle(0, 0, 50, 17, 0, black);
    triangle.triangles = {0, 1, 2};
    picture.triangles.push_back(triangle);
    const auto greys = [](const Image& image) {
        int count = 0;
        for (const std::uint8_t value : image.pixels)
            count += value != 0 && value != 255;
        return count;
    };
    EXPECT_EQ(greys(draw(picture)), 0);
    picture.samples = 8;
    EXPECT_GT(greys(draw(picture)), 50);
    picture.samples = 1000;  // more than any driver has
    EXPECT_GT(greys(draw(picture)), 50);
}

TEST_F(DrawingTest, DrawingTwiceGivesTheSameBytes) {
    Picture picture = whiteGround();
    picture.samples = 4;
    picture.triangles.push_back(lit(rectangle(-60, -40, 60, 13, 0, red), 0.3F, 0.2F, 0.93F));
    picture.triangles.push_back(rectangle(-10, -50, 40, 50, 4, {0, 90, 200, 100}));
    picture.lines.push_back(line({-70, -33, 2}, {60, 41, 9}, black, 2));
    picture.texts.push_back({blue, {"R 12.5", {-90, 0, 5}, {1, 0, 0}, {0, 1, 0}, 9}});
    const Image first = draw(picture);
    const Image second = draw(picture);
    EXPECT_EQ(first.pixels, second.pixels);
    EXPECT_EQ(makeDrawing()->Draw(picture).pixels, first.pixels);  // in a new context, too
}

TEST_F(DrawingTest, PointsThatAreNoNumbersDoNotSpoilTheRest) {
    Picture picture = whiteGround();
    TriangleBatch broken = rectangle(-30, -10, 20, 40, 0, blue);
    broken.points[0] = NAN;
    broken.points[5] = INFINITY;
    picture.triangles = {broken, rectangle(50, -10, 60, 10, 0, red)};
    EXPECT_EQ(countInk(draw(picture), 150, 40, 160, 60), 10 * 20);
}

/// Peak memory of this process in megabytes.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stol(line.substr(6)) / 1024;
    }
    return 0;
}

#ifdef __SANITIZE_ADDRESS__
constexpr long slack = 15 + 256;  // freed memory is kept in quarantine
#else
constexpr long slack = 15;
#endif

TEST_F(DrawingTest, ManyPicturesNeedNoMoreMemoryThanAFew) {
    Picture picture = whiteGround();
    picture.width = 800;
    picture.height = 500;
    picture.samples = 4;
    picture.triangles.push_back(rectangle(-10, -50, 40, 50, 4, red));
    for (int i = 0; i < 5; ++i)
        draw(picture);
    const long before = peakMemory();
    for (int i = 0; i < 30; ++i)
        draw(picture);
    EXPECT_LT(peakMemory(), before + slack);
}

}  // namespace
}  // namespace kesview
