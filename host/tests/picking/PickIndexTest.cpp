#include "picking/BruteForce.h"
#include "picking/PickIndex.h"
#include "view/SceneKit.h"

#include <KesVizCore/math/HitTests.h>
#include <KesVizCore/math/Ray.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace kesview::testing {
namespace {

/// A scene of shared and nested bodies in random places, turned, scaled, mirrored.
class RandomScene {
public:
    explicit RandomScene(unsigned seed) : kit(makePickIndex), _random(seed) {
        std::vector<viz::Node*> bodies;
        for (std::uint64_t id = 2; id < 8; ++id) {
            viz::Node* const container = kit.Group(kit.Root(), id);
            kit.Place(container, RandomPlace(40));
            bodies.push_back(makeBody(container, 100 + id));
        }
        viz::Node* const assembly = kit.Group(kit.Root(), 20);
        kit.Place(assembly, RandomPlace(20));
        for (std::uint64_t id = 2; id < 20; ++id) {
            viz::Node* const container = kit.Group(assembly, id);
            kit.Place(container, RandomPlace(40));
            container->AddChild(bodies[_random() % bodies.size()]);
        }
        viz::Node* const again = kit.Group(kit.Root(), 21);
        kit.Place(again, RandomPlace(60));
        again->AddChild(assembly);
        makeBody(kit.Root(), 30);  // stands where it is described
        makeNotes();
    }

    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(_random);
    }
    Vector Point(double half) {
        return {Between(-half, half), Between(-half, half), Between(-half, half)};
    }
    PickRay Ray(double aperture) {
        const Vector root = Point(150);
        return {root, Between(0.1, 3) * (Point(50) - root), aperture, Number() % 4 == 0};
    }
    unsigned Number() { return static_cast<unsigned>(_random()); }

    Matrix RandomPlace(double reach) {
        const Vector x = unit(Point(1));
        const Vector y = unit(cross(x, Point(1)));
        const Vector z = cross(x, y);
        const Vector origin = Point(reach);
        const double scale = Between(0.5, 2);
        const double mirror = Number() % 4 == 0 ? -1 : 1;
        return {scale * x[0],
                scale * x[1],
                scale * x[2],
                0,
                scale * y[0],
                scale * y[1],
                scale * y[2],
                0,
                mirror * scale * z[0],
                mirror * scale * z[1],
                mirror * scale * z[2],
                0,
                origin[0],
                origin[1],
                origin[2],
                1};
    }

    SceneKit kit;

private:
    Values points(int count, double half) {
        Values values;
        for (int at = 0; at < 3 * count; ++at) {
            values.push_back(static_cast<float>(Between(-half, half)));
        }
        return values;
    }

    viz::Node* makeBody(viz::Node* parent, std::uint64_t id) {
        viz::Node* const body = kit.Group(parent, id);
        viz::Node* const faceType = kit.Type(body, viz::FaceType);
        viz::Node* const edgeType = kit.Type(body, viz::EdgeType);
        for (std::uint64_t face = 1; face <= 5; ++face) {
            kit.Triangles(kit.Group(faceType, face), points(3 * 6, 8));
            kit.Lines(kit.Group(edgeType, face), points(6, 8));
        }
        float* const cloud = kit.Keep(points(4, 8));
        kit.Add(body, kit.scene.GetGeometryItemFactory()->CreatePointCloud(id, 4, cloud));
        return body;
    }

    void makeNotes() {
        viz::Node* const notes = kit.Type(kit.Root(), viz::NoteType);
        kit.Lines(kit.Group(notes, 50), points(10, 60));
        viz::Node* const text = kit.Group(notes, 51);
        kit.Place(text, RandomPlace(30));
        kit.Text(text, L"a note\nof two lines", 8);
    }

    std::mt19937 _random;
};

void expectSame(const std::optional<PickHit>& actual, const std::optional<PickHit>& expected) {
    ASSERT_EQ(actual.has_value(), expected.has_value());
    if (!actual) {
        return;
    }
    EXPECT_EQ(actual->path, expected->path);
    EXPECT_EQ(actual->point, expected->point);
    EXPECT_EQ(actual->distance, expected->distance);
    EXPECT_EQ(actual->kind, expected->kind);
    EXPECT_EQ(actual->type, expected->type);
    EXPECT_EQ(actual->annotation, expected->annotation);
    EXPECT_EQ(actual->itemId, expected->itemId);
}

/// How many of the rays hit a surface, and how many a line or a point.
struct Tally {
    int surfaces = 0;
    int thin = 0;
};

Tally compareRays(RandomScene& made, int count, double aperture) {
    Tally tally;
    const Everything everything(made.kit.scene);
    for (int trial = 0; trial < count && !::testing::Test::HasFailure(); ++trial) {
        SCOPED_TRACE(trial);
        const PickRay ray = made.Ray(aperture);
        const std::optional<PickHit> hit = made.kit.scene.Pick(ray);
        expectSame(hit, everything.Search(ray));
        if (hit) {
            const bool isThin = hit->kind == PickKind::Line || hit->kind == PickKind::Point;
            ++(isThin ? tally.thin : tally.surfaces);
        }
    }
    return tally;
}

TEST(PickIndexTest, AnswersAsASearchThroughEverything) {
    Tally all;
    for (unsigned seed = 1; seed <= 3; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomScene made(seed);
        for (const double aperture : {0.0, 0.05, 0.6}) {
            const Tally tally = compareRays(made, 250, aperture);
            all.surfaces += tally.surfaces;
            all.thin += tally.thin;
        }
    }
    EXPECT_GT(all.surfaces, 400);
    EXPECT_GT(all.thin, 100);
}

TEST(PickIndexTest, AnswersSoWhateverIsHiddenIsolatedAndCutAway) {
    RandomScene made(9);
    SceneAdapter& scene = made.kit.scene;
    compareRays(made, 50, 0.3);
    scene.Hide(path({1, 20, 3}));
    scene.Hide(path({1, 3, 103, faces, 2}));
    scene.SetClipping(SavedView::Plane{{0, 0, 5}, unit({1, 2, 3})}, false);
    EXPECT_GT(compareRays(made, 400, 0.3).surfaces, 20);
    scene.SetClipping(SavedView::Plane{{0, 0, 5}, unit({1, 2, 3})}, true);
    compareRays(made, 200, 0.3);
    scene.Filter().SetVisible(viz::EdgeType, false);
    compareRays(made, 200, 0.3);
    scene.Isolate(path({1, 21}));
    EXPECT_GT(compareRays(made, 400, 0.3).surfaces, 20);
    scene.ShowAll();
    scene.GetRenderingOptions()->SetDisplayPMI(false);
    compareRays(made, 200, 0.3);
}

TEST(PickIndexTest, FollowsEveryEdit) {
    RandomScene made(12);
    SceneAdapter& scene = made.kit.scene;
    compareRays(made, 100, 0.3);
    scene.DeleteNode(path({1, 20, 5}));
    compareRays(made, 200, 0.3);
    scene.OpenNodes(path({1, 4}));
    Matrix place = made.RandomPlace(30);
    scene.ApplyAttribute(new viz::AttributeTransform(place.data()));
    scene.CloseAllNodes();
    compareRays(made, 200, 0.3);
    scene.DeleteAllNodes();
    EXPECT_FALSE(scene.Pick(made.Ray(1)));
    made.kit.Body(made.kit.Root(), 5);
    EXPECT_TRUE(scene.Pick({{2, 2, 9}, {0, 0, -1}, 0}));
}

TEST(PickIndexTest, AgreesWithTheLibrarysOwnTestsOnFriendlyScenes) {
    SceneKit kit(makePickIndex);
    std::mt19937 random(3);
    std::uniform_real_distribution<float> along(-20, 20);
    std::vector<Values> triangles;
    for (std::uint64_t id = 2; id < 200; ++id) {
        Values points(9);
        for (float& value : points) {
            value = along(random);
        }
        triangles.push_back(points);
        kit.Triangles(kit.Group(kit.Root(), id), points);
    }
    int hits = 0;
    for (int trial = 0; trial < 1000; ++trial) {
        const float root[3] = {along(random), along(random), 90};
        const float direction[3] = {0.1F * along(random), 0.1F * along(random), -9};
        std::uint64_t nearest = 0;
        float distance = HUGE_VALF;
        for (std::size_t at = 0; at < triangles.size(); ++at) {
            const float* const p = triangles[at].data();
            float point[3];
            float reach = 0;
            if (viz::RayHitsTriangle(p, p + 3, p + 6, root, direction, point, reach) &&
                reach < distance) {
                distance = reach;
                nearest = at + 2;
            }
        }
        viz::RenderId id;
        ASSERT_EQ(kit.scene.PickVisual(viz::Ray(root, direction, 0.0), id), nearest != 0);
        if (nearest != 0) {
            EXPECT_EQ(id, path({1, nearest})) << "trial " << trial;
            ++hits;
        }
    }
    EXPECT_GT(hits, 500);
}

// --- what wins ----------------------------------------------------------------------------------

class PickOrderTest : public ::testing::Test {
protected:
    std::optional<PickHit> Down(double x, double y, double aperture = 0.5) {
        return kit.scene.Pick({{x, y, 100}, {0, 0, -1}, aperture});
    }
    SceneKit kit{makePickIndex};
};

TEST_F(PickOrderTest, AnEdgeWinsOverItsFaceWithinTheAperture) {
    kit.Body(kit.Root(), 5);
    const std::optional<PickHit> edge = Down(3, 0.3);
    ASSERT_TRUE(edge);
    EXPECT_EQ(edge->path, path({1, 5, edges, 200}));
    EXPECT_EQ(edge->kind, PickKind::Line);
    EXPECT_EQ(edge->type, viz::EdgeType);
    EXPECT_NEAR(edge->point[1], 0, 1e-6) << "on the edge";
    const std::optional<PickHit> face = Down(3, 0.7);
    ASSERT_TRUE(face);
    EXPECT_EQ(face->path, path({1, 5, faces, 100}));
    EXPECT_NEAR(face->distance, 100, 1e-4);
    EXPECT_FALSE(face->annotation);
}

TEST_F(PickOrderTest, AnEdgeThatAFaceCoversDoesNotWin) {
    kit.Body(kit.Root(), 5);
    viz::Node* const above = kit.Group(kit.Root(), 6);
    kit.Place(above, moved(0, -1, 3));
    above->AddChild(kit.scene.GetNode(path({1, 5})));
    EXPECT_EQ(Down(3, 0.3)->path, path({1, 6, 5, faces, 100}));
}

TEST_F(PickOrderTest, OneOfTwoReferencesIsNamedByItsPath) {
    kit.Body(kit.Group(kit.Root(), 2), 5);
    viz::Node* const other = kit.Group(kit.Root(), 3);
    kit.Place(other, moved(50, 0, 0));
    other->AddChild(kit.scene.GetNode(path({1, 2, 5})));
    EXPECT_EQ(Down(53, 3)->path, path({1, 3, 5, faces, 100}));
    EXPECT_EQ(Down(3, 3)->path, path({1, 2, 5, faces, 100}));
    kit.scene.Hide(path({1, 3, 5, faces, 100}));
    EXPECT_FALSE(Down(53, 3));
    EXPECT_TRUE(Down(3, 3));
}

TEST_F(PickOrderTest, BehindWhatIsHiddenOrCutAwayTheNextIsHit) {
    kit.Body(kit.Root(), 5);
    viz::Node* const above = kit.Group(kit.Root(), 6);
    kit.Place(above, moved(0, 0, 3));
    above->AddChild(kit.scene.GetNode(path({1, 5})));
    EXPECT_EQ(Down(3, 3)->path, path({1, 6, 5, faces, 100}));
    kit.scene.SetClipping(SavedView::Plane{{0, 0, 1}, {0, 0, -1}}, false);
    EXPECT_EQ(Down(3, 3)->path, path({1, 5, faces, 100}));
    kit.scene.SetClipping(std::nullopt, false);
    kit.scene.Hide(path({1, 6}));
    EXPECT_EQ(Down(3, 3)->path, path({1, 5, faces, 100}));
}

TEST_F(PickOrderTest, AnnotationsArePickedWhereTheyAreShown) {
    viz::Node* const notes = kit.Type(kit.Root(), viz::NoteType);
    kit.Lines(kit.Group(notes, 7), {0, 0, 5, 10, 0, 5});
    kit.Text(kit.Group(notes, 8), L"wide", 2);
    kit.scene.SetClipping(SavedView::Plane{{0, 0, -50}, {0, 0, -1}}, false);
    const std::optional<PickHit> line = Down(5, 0.1);
    ASSERT_TRUE(line) << "no plane cuts an annotation";
    EXPECT_EQ(line->path, path({1, static_cast<std::uint64_t>(viz::NoteType), 7}));
    EXPECT_TRUE(line->annotation);
    EXPECT_EQ(Down(3, 1)->kind, PickKind::Text);
    kit.scene.SetClipping(kit.scene.GetClipping(), true);
    EXPECT_FALSE(Down(5, 0.1));
    kit.scene.SetClipping(std::nullopt, false);
    kit.scene.GetRenderingOptions()->SetDisplayPMI(false);
    EXPECT_FALSE(Down(5, 0.1));
}

TEST_F(PickOrderTest, FarFromZeroTheRightFaceIsHit) {
    viz::Node* const group = kit.Group(kit.Root(), 2);
    kit.Place(group, moved(1e9, 1e9, 0));
    kit.Body(group, 5, 0.01F);
    EXPECT_EQ(Down(1e9 + 0.003, 1e9 + 0.003, 0)->path, path({1, 2, 5, faces, 100}));
    EXPECT_FALSE(Down(1e9 + 0.006, 1e9 + 0.006, 0)) << "beyond the long side";
}

TEST_F(PickOrderTest, ASmallApertureAfterALargeOneIsStillSmall) {
    kit.Body(kit.Root(), 5);
    EXPECT_EQ(Down(3, 2, 4)->kind, PickKind::Line);
    EXPECT_EQ(Down(3, 2, 0.001)->kind, PickKind::Surface);
    EXPECT_EQ(Down(3, 2, 4)->kind, PickKind::Line);
}

TEST_F(PickOrderTest, NothingIsHitByARayWithoutDirectionOrInAnEmptyScene) {
    EXPECT_FALSE(Down(0, 0));
    kit.Body(kit.Root(), 5);
    EXPECT_FALSE(kit.scene.Pick({{3, 3, 9}, {0, 0, 0}, 1}));
    kit.Triangles(kit.Group(kit.Root(), 9), {NAN, 0, 0, 1, 0, 0, 0, 1, 0});
    EXPECT_TRUE(Down(3, 3)) << "what is not finite is passed over";
}

// --- through a view -----------------------------------------------------------------------------

TEST(ViewPickTest, APixelHitsWhatIsDrawnThere) {
    SceneKit kit(makePickIndex);
    kit.Body(kit.Root(), 5);
    kit.view.SetViewport(300, 200);
    for (const char* const name : {"top", "iso", "bottom"}) {
        for (const bool perspective : {false, true}) {
            SCOPED_TRACE(name);
            kit.view.SetPerspective(perspective);
            kit.view.SetStandardView(name);
            const Camera& camera = kit.view.GetCamera();
            const Vector back = camera.eye - camera.target;
            const Vector offset = Vector{2, 3, 0} - camera.target;
            const double nearer =
                perspective ? dot(back, back) / (dot(back, back) - dot(offset, back)) : 1;
            const double pixels = 200 / camera.height * nearer;
            const int x = static_cast<int>(150 + pixels * dot(offset, rightOf(camera)));
            const int y = static_cast<int>(100 - pixels * dot(offset, camera.up));
            const std::optional<PickHit> hit = kit.view.Pick(x, y);
            ASSERT_TRUE(hit);
            EXPECT_EQ(hit->path, path({1, 5, faces, 100}));
            EXPECT_NEAR(hit->point[0], 2, 2 / pixels);
            EXPECT_NEAR(hit->point[1], 3, 2 / pixels);
            viz::RenderId id;
            EXPECT_TRUE(kit.view.PickAt(x, y, id));
            EXPECT_EQ(id, hit->path);
            EXPECT_FALSE(kit.view.Pick(0, 0));
        }
    }
}

TEST(ViewPickTest, FarFromZeroAPixelIsStillExact) {
    SceneKit kit(makePickIndex);
    viz::Node* const group = kit.Group(kit.Root(), 2);
    kit.Place(group, moved(1e8, 2e8, 3e8));
    kit.Body(group, 5);
    kit.view.SetViewport(300, 200);
    kit.view.SetStandardView("top");
    const std::optional<PickHit> hit = kit.view.Pick(120, 120);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->path, path({1, 2, 5, faces, 100}));
    const PickRay ray = rayThrough(kit.view.GetCamera(), 300, 200, 120, 120);
    EXPECT_NEAR(hit->point[0], ray.root[0], 1e-5);
    EXPECT_NEAR(hit->point[1], ray.root[1], 1e-5);
}

TEST(ViewPickTest, WithoutPerspectiveWhatLiesBehindTheEyeIsPickedAsItIsDrawn) {
    SceneKit kit(makePickIndex);
    kit.Body(kit.Root(), 5);
    Camera camera;
    camera.eye = {3, 3, -5};
    camera.target = {3, 3, -6};
    camera.height = 10;
    kit.view.SetCamera(camera);
    EXPECT_TRUE(kit.view.Pick(800, 500));
}

}  // namespace
}  // namespace kesview::testing
