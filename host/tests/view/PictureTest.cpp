#include "view/SceneKit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

namespace kesview::testing {
namespace {

Vector worldPoint(const Picture& picture, const std::vector<float>& points, std::size_t index) {
    return picture.origin + Vector{points[3 * index], points[3 * index + 1], points[3 * index + 2]};
}

void expectNear(const Vector& actual, const Vector& expected, double tolerance) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(actual[axis], expected[axis], tolerance) << "axis " << axis;
    }
}

TEST(PictureTest, ThereIsOneBatchForEachColor) {
    SceneKit kit;
    for (std::uint64_t id = 2; id < 52; ++id) {
        SceneKit::Paint(kit.Body(kit.Root(), id),
                        id % 2 == 0 ? viz::RGBAColor(9, 0, 0, 255) : viz::RGBAColor(0, 9, 0, 100));
    }
    const Picture picture = kit.view.MakePicture();
    ASSERT_EQ(picture.triangles.size(), 2U);
    EXPECT_EQ(picture.triangles[0].color, (Color{9, 0, 0, 255}));
    EXPECT_EQ(picture.triangles[1].color, (Color{0, 9, 0, 100}));
    EXPECT_EQ(picture.triangles[0].triangles.size(), 25U * 3);
    EXPECT_EQ(picture.triangles[0].points.size(), 25U * 9);
    ASSERT_EQ(picture.lines.size(), 1U);
    EXPECT_EQ(picture.lines[0].starts.size(), 50U);
    EXPECT_TRUE(picture.annotationTriangles.empty());
}

TEST(PictureTest, PointsStandInTheWorldRelativeToTheOrigin) {
    SceneKit kit;
    viz::Node* const group = kit.Group(kit.Root(), 2);
    kit.Place(group, moved(100, 0, 0));
    kit.Place(kit.Body(group, 5), turned());
    const Picture picture = kit.view.MakePicture();
    expectNear(picture.origin, {95, 5, 0}, 1e-12);
    const std::vector<float>& points = picture.triangles.at(0).points;
    expectNear(worldPoint(picture, points, 0), {100, 0, 0}, 1e-6);
    expectNear(worldPoint(picture, points, 1), {100, 10, 0}, 1e-6);
    expectNear(worldPoint(picture, points, 2), {90, 0, 0}, 1e-6);
}

TEST(PictureTest, FarFromZeroNothingIsBlurred) {
    SceneKit kit;
    viz::Node* const group = kit.Group(kit.Root(), 2);
    kit.Place(group, moved(1e9, -3e8, 5e7));
    kit.Body(group, 5, 0.125F);
    const Picture picture = kit.view.MakePicture();
    const std::vector<float>& points = picture.triangles.at(0).points;
    EXPECT_NEAR(points[3] - points[0], 0.125, 1e-6);
    expectNear(worldPoint(picture, points, 0), {1e9, -3e8, 5e7}, 2e-7);
}

TEST(PictureTest, NormalsTurnWithTheirFacesAndStayPerpendicularWhenStretched) {
    SceneKit kit;
    viz::Node* const body = kit.Group(kit.Root(), 2);
    const float s = std::sqrt(0.5F);
    kit.Triangles(body, {0, 0, 0, 0, 1, 0, 1, 0, -1}, {s, 0, s, s, 0, s, s, 0, s});
    Matrix stretched = turned();
    stretched[10] = 3;  // along z
    kit.Place(body, stretched);
    const Picture picture = kit.view.MakePicture();
    const TriangleBatch& batch = picture.triangles.at(0);
    ASSERT_EQ(batch.normals.size(), 9U);
    const Vector normal = {batch.normals[0], batch.normals[1], batch.normals[2]};
    EXPECT_NEAR(lengthOf(normal), 1, 1e-6);
    for (std::size_t corner : {1U, 2U}) {
        const Vector side =
            worldPoint(picture, batch.points, corner) - worldPoint(picture, batch.points, 0);
        EXPECT_NEAR(dot(side, normal), 0, 1e-6);
    }
    EXPECT_GT(normal[2], 0);
}

TEST(PictureTest, AMirrorKeepsTheOutsideOutside) {
    SceneKit kit;
    viz::Node* const body = kit.Group(kit.Root(), 2);
    kit.Triangles(body, {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 0, 1, 0, 0, 1, 0, 0, 1});
    Matrix mirror = identityMatrix;
    mirror[0] = -1;
    kit.Place(body, mirror);
    const Picture picture = kit.view.MakePicture();
    const TriangleBatch& batch = picture.triangles.at(0);
    const auto corner = [&](std::size_t at) {
        return worldPoint(picture, batch.points, batch.triangles[at]);
    };
    EXPECT_GT(cross(corner(1) - corner(0), corner(2) - corner(0))[2], 0);
    EXPECT_FLOAT_EQ(batch.normals[2], 1);
}

TEST(PictureTest, ItemsWithAndWithoutNormalsAreNotMixed) {
    SceneKit kit;
    kit.Triangles(kit.Group(kit.Root(), 2), {0, 0, 0, 1, 0, 0, 0, 1, 0});
    kit.Triangles(kit.Group(kit.Root(), 3), {0, 0, 0, 1, 0, 0, 0, 1, 0},
                  {0, 0, 1, 0, 0, 1, 0, 0, 1});
    const Picture picture = kit.view.MakePicture();
    ASSERT_EQ(picture.triangles.size(), 2U);
    EXPECT_TRUE(picture.triangles[0].normals.empty());
    EXPECT_EQ(picture.triangles[1].normals.size(), picture.triangles[1].points.size());
}

TEST(PictureTest, AnnotationsStandApartAndUnlit) {
    SceneKit kit;
    viz::Node* const note = kit.Group(kit.Type(kit.Root(), viz::NoteType), 7);
    kit.Lines(note, {0, 0, 0, 5, 0, 0, 5, 5, 0});
    kit.Triangles(note, {0, 0, 0, 1, 0, 0, 0, 1, 0});
    viz::Node* const text = kit.Group(note, 8);
    Matrix laid = turned();
    laid[12] = 3;
    kit.Place(text, laid);
    kit.Text(text, L"\u2300 5", 2.5F);
    const Picture picture = kit.view.MakePicture();
    EXPECT_TRUE(picture.triangles.empty());
    EXPECT_TRUE(picture.lines.empty());
    ASSERT_EQ(picture.annotationTriangles.size(), 1U);
    EXPECT_FALSE(picture.annotationTriangles[0].lit);
    ASSERT_EQ(picture.annotationLines.size(), 1U);
    ASSERT_EQ(picture.texts.size(), 1U);
    const PlacedText& placed = picture.texts[0].placed;
    EXPECT_EQ(placed.text, "⌀ 5");
    EXPECT_DOUBLE_EQ(placed.height, 2.5);
    expectNear(picture.origin + placed.position, {3, 0, 0}, 1e-9);
    expectNear(placed.u, {0, 1, 0}, 1e-12);
    expectNear(placed.v, {-1, 0, 0}, 1e-12);
}

TEST(PictureTest, LineStylesGiveWidthAndPattern) {
    SceneKit kit;
    kit.Lines(kit.Group(kit.Root(), 2), {0, 0, 0, 1, 0, 0});
    viz::Node* const styled = kit.Group(kit.Root(), 3);
    styled->SetAttribute(new viz::AttributeLineStyle(2.5F, "dashed"));
    kit.Lines(kit.Group(styled, 4), {0, 0, 0, 1, 0, 0});
    const Picture picture = kit.view.MakePicture();
    ASSERT_EQ(picture.lines.size(), 2U);
    EXPECT_EQ(picture.lines[0].width, 1.25F);
    EXPECT_FALSE(picture.lines[0].dashed);
    EXPECT_EQ(picture.lines[1].width, 2.5F);
    EXPECT_TRUE(picture.lines[1].dashed);
}

TEST(PictureTest, HighlightedReferencesHaveABatchOfTheirOwn) {
    SceneKit kit;
    viz::Node* const first = kit.Group(kit.Root(), 2);
    kit.Group(kit.Root(), 3)->AddChild(kit.Body(first, 5));
    kit.scene.Highlight(path({1, 3, 5, faces}), viz::RGBAColor(255, 140, 0, 255));
    const Picture picture = kit.view.MakePicture();
    ASSERT_EQ(picture.triangles.size(), 2U);
    EXPECT_EQ(picture.triangles[1].color, (Color{255, 140, 0, 255}));
    EXPECT_EQ(picture.triangles[1].triangles.size(), 3U);
    EXPECT_EQ(picture.lines.size(), 1U);
}

TEST(PictureTest, PointsAndVerticesArePoints) {
    SceneKit kit;
    float points[6] = {0, 0, 0, 4, 0, 0};
    kit.Add(kit.Group(kit.Root(), 2),
            kit.scene.GetGeometryItemFactory()->CreatePointCloud(2, 2, points));
    const Picture picture = kit.view.MakePicture();
    ASSERT_EQ(picture.points.size(), 1U);
    EXPECT_EQ(picture.points[0].points, (Values{-2, 0, 0, 2, 0, 0}));
    EXPECT_GT(picture.points[0].size, 1);
}

TEST(PictureTest, AnEmptySceneIsAnEmptyPicture) {
    SceneKit kit;
    const Picture picture = kit.view.MakePicture();
    EXPECT_TRUE(picture.triangles.empty());
    EXPECT_EQ(picture.origin, (Vector{0, 0, 0}));
    const SceneView alone;
    EXPECT_TRUE(alone.MakePicture().triangles.empty());
}

// --- against an expansion of its own ------------------------------------------------------------

/// Triangles by colour, as sorted corners, expanded by recursion over a scene of random levels.
using Expansion = std::map<Color, std::vector<std::array<float, 9>>>;

struct RandomScene {
    explicit RandomScene(unsigned seed) : random(seed) {}

    Matrix RandomPlace() {
        std::uniform_real_distribution<double> angle(0, 6.28);
        std::uniform_real_distribution<double> shift(-50, 50);
        const double a = angle(random);
        Matrix m = moved(shift(random), shift(random), shift(random));
        m[0] = std::cos(a);
        m[2] = std::sin(a);
        m[8] = -std::sin(a);
        m[10] = std::cos(a);
        return m;
    }

    void Fill(viz::Node* parent, const Matrix& world, Color color, int depth) {
        for (std::uint64_t id = 2; id < 6; ++id) {
            viz::Node* const node = kit.Group(parent, id);
            Matrix place = world;
            if (random() % 2 == 0) {
                const Matrix own = RandomPlace();
                kit.Place(node, own);
                place = product(world, own);
            }
            Color inner = color;
            if (random() % 3 == 0) {
                inner = {static_cast<std::uint8_t>(random() % 3), 0, 0, 255};
                SceneKit::Paint(node, viz::RGBAColor(inner[0], inner[1], inner[2], inner[3]));
            }
            if (depth > 0) {
                Fill(node, place, inner, depth - 1);
            } else {
                AddTriangle(node, place, inner);
            }
        }
    }

    void AddTriangle(viz::Node* node, const Matrix& place, const Color& color) {
        std::uniform_real_distribution<float> coordinate(-5, 5);
        Values points(9);
        for (float& value : points) {
            value = coordinate(random);
        }
        kit.Triangles(node, points);
        std::array<float, 9> world{};
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const Vector p = transformPoint(place, points.data() + 3 * corner);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                world[3 * corner + axis] = static_cast<float>(p[axis]);
            }
        }
        expected[color].push_back(world);
    }

    std::mt19937 random;
    SceneKit kit;
    Expansion expected;
};

TEST(PictureTest, HoldsWhatAnExpansionByHandHolds) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        RandomScene made(seed);
        const viz::RGBAColor body = made.kit.scene.GetRenderingOptions()->GetDefaultBodyColor();
        made.Fill(made.kit.Root(), identityMatrix, toColor(body), 3);
        const Picture picture = made.kit.view.MakePicture();
        ASSERT_EQ(picture.triangles.size(), made.expected.size());
        for (const TriangleBatch& batch : picture.triangles) {
            const auto& triangles = made.expected.at(batch.color);
            ASSERT_EQ(batch.triangles.size(), 3 * triangles.size());
            for (std::size_t at = 0; at < batch.triangles.size(); ++at) {
                const Vector point = worldPoint(picture, batch.points, batch.triangles[at]);
                const float* const corner = triangles[at / 3].data() + 3 * (at % 3);
                expectNear(point, {corner[0], corner[1], corner[2]}, 1e-4);
            }
        }
    }
}

}  // namespace
}  // namespace kesview::testing
