/// @file
/// The real reader in its own process, over real files.

#include "reading/ReadFile.h"
#include "support/RealFiles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace kesview {
namespace {

#if defined(KESVIEW_REAL_READER)

using support::realFile;

class ReadRealFileTest : public testing::Test {
protected:
    void SetUp() override {
        ::setenv("KESVIEW_READER", KESVIEW_REAL_READER, 1);
        KESVIEW_NEEDS_DATA();
    }
    void TearDown() override { ::unsetenv("KESVIEW_READER"); }

    static ReadFailure failureOf(const std::string& name, const ReadOptions& options) {
        try {
            readFile(realFile(name), options);
        } catch (const ReadError& error) {
            return error.Failure();
        }
        ADD_FAILURE() << name << " was read";
        return ReadFailure::Interrupted;
    }

    ReadOptions options;
};

TEST_F(ReadRealFileTest, AStepAssemblyArrivesWithItsPartsAndAnnotations) {
    std::vector<std::string> stages;
    const Document document =
        readFile(realFile("gen_bracket.stp"), options,
                 [&stages](const std::string& stage, double) { stages.push_back(stage); });
    EXPECT_EQ(document.format, "STEP");
    EXPECT_EQ(document.unit, "millimetre");
    ASSERT_FALSE(stages.empty());
    EXPECT_EQ(stages.front(), "reading");
    std::size_t faces = 0;
    for (const Product& product : document.products) {
        for (const Body& body : product.bodies) {
            faces += body.faces.size();
        }
    }
    EXPECT_GT(faces, 0U);
    EXPECT_FALSE(document.roots.empty());
}

TEST_F(ReadRealFileTest, AMeshArrivesWithItsTriangles) {
    const Document document = readFile(realFile("occt_propeller.stl"), options);
    ASSERT_EQ(document.products.size(), 1U);
    ASSERT_EQ(document.products[0].bodies.size(), 1U);
    EXPECT_EQ(document.products[0].bodies[0].kind, BodyKind::Mesh);
    std::size_t triangles = 0;
    for (const Face& face : document.products[0].bodies[0].faces) {
        triangles += face.triangles.size() / 3;
    }
    EXPECT_EQ(triangles, 7374U);
}

TEST_F(ReadRealFileTest, DamagedFilesAreDamagedAndUnknownOnesUnknown) {
    EXPECT_EQ(failureOf("bad/bad_truncated_ftc07.stp", options), ReadFailure::Damaged);
    EXPECT_EQ(failureOf("bad/bad_empty.stp", options), ReadFailure::Damaged);
    EXPECT_EQ(failureOf("bad/bad_empty.stl", options), ReadFailure::Damaged);
    EXPECT_EQ(failureOf("bad/lfs_pointer.stp", options), ReadFailure::UnknownFormat);
}

TEST_F(ReadRealFileTest, TheTimeLimitHoldsInTheMiddleOfAFile) {
    options.timeLimit = std::chrono::milliseconds(50);
    EXPECT_EQ(failureOf("odrive_pcb_v3.5.step", options), ReadFailure::LimitReached);
}

TEST_F(ReadRealFileTest, TheMemoryLimitHolds) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "a memory checker needs all address space for itself";
#endif
    options.memoryLimit = 100U << 20;
    EXPECT_EQ(failureOf("odrive_pcb_v3.5.step", options), ReadFailure::LimitReached);
}

#endif

}  // namespace
}  // namespace kesview
