#include "document/CheckDocument.h"
#include "occ/Measures.h"
#include "reading/occ/ReadCadFile.h"
#include "support/RealFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace kesview {
namespace {

using support::realFile;

/// What is known of a real file.
struct RealFile {
    std::string name;
    FileFormat format;
    std::size_t leaves;
    std::size_t solids;
    std::size_t faces;
    std::size_t edges;
    std::size_t colors;
    std::string unit;
    std::string schema;
    double diagonal;
};

void PrintTo(const RealFile& file, std::ostream* out) {
    *out << file.name;
}

Document readReal(const std::string& name, FileFormat format, bool withPmi = false) {
    ReadOptions options;
    options.withPmi = withPmi;
    return readCadFile(realFile(name), format, options, {});
}

/// Edges that cannot be drawn for want of length are no finding; every face must be drawn.
void expectDrawable(const Document& document) {
    for (const Product& product : document.products) {
        for (const Body& body : product.bodies) {
            for (const Face& face : body.faces) {
                EXPECT_FALSE(face.triangles.empty()) << product.name << " face " << face.id;
                for (const float length : face.points) {
                    ASSERT_TRUE(std::isfinite(length));
                }
            }
        }
    }
}

class RealFilesTest : public testing::TestWithParam<RealFile> {};

TEST_P(RealFilesTest, ItsFactsAreRead) {
    KESVIEW_NEEDS_DATA();
    const RealFile& file = GetParam();
    const Document document = readReal(file.name, file.format);
    const Counts counts = countsOf(document);
    EXPECT_EQ(counts.leaves, file.leaves);
    EXPECT_EQ(counts.solids, file.solids);
    EXPECT_EQ(counts.faces, file.faces);
    EXPECT_EQ(counts.edges, file.edges);
    EXPECT_EQ(distinctColors(document), file.colors);
    EXPECT_EQ(document.unit, file.unit);
    EXPECT_EQ(document.schema, file.schema);
    EXPECT_NEAR(extentOf(document).Diagonal(), file.diagonal, 1e-5 * file.diagonal);
    EXPECT_NO_THROW(checkDocument(document));
    expectDrawable(document);
}

const std::vector<RealFile> realFiles = {
    {"fw_printable_case_full.stp", FileFormat::Step, 15, 15, 1877, 5170, 0, "millimetre", "AP203",
     329.207},
    {"gen_big_40x25.stp", FileFormat::Step, 5000, 5000, 56000, 122000, 2, "millimetre",
     "AP242 edition 1", 6465.0},
    {"gen_bracket.stp", FileFormat::Step, 3, 3, 36, 80, 5, "millimetre", "AP242 edition 1",
     160.312},
    {"nist_ctc_01_asme1_ap242-e1.stp", FileFormat::Step, 2, 1, 117, 322, 2, "millimetre",
     "AP242 edition 1", 930.054},
    {"nist_ctc_02_asme1_ap203.stp", FileFormat::Step, 2, 1, 487, 1420, 3, "millimetre",
     "AP203 edition 2", 1167.05},
    {"nist_ctc_05_asme1_ap242-e1.stp", FileFormat::Step, 1, 1, 156, 406, 1, "inch",
     "AP242 edition 1", 907.161},
    {"nist_ftc_07_asme1_ap242-e2.stp", FileFormat::Step, 3, 1, 306, 909, 2, "inch",
     "AP242 edition 2", 459.875},
    {"nist_ftc_11_asme1_ap242-e1.stp", FileFormat::Step, 1, 1, 8, 14, 1, "millimetre",
     "AP242 edition 1", 89.0958},
    {"nist_stc_08_asme1_ap242-e3.stp", FileFormat::Step, 3, 1, 271, 857, 4, "millimetre",
     "AP242 edition 3", 386.022},
    {"occt_screw.step", FileFormat::Step, 1, 1, 10, 22, 0, "millimetre", "AP214", 50.8013},
    {"odrive_pcb_v3.5.step", FileFormat::Step, 625, 624, 7185, 17057, 15, "millimetre", "AP214",
     150.033},
    {"occt_bearing.iges", FileFormat::Iges, 1, 0, 213, 941, 0, "millimetre", "IGES version 9",
     0.161424},
    {"occt_Motor-c.brep", FileFormat::Brep, 1, 17, 223, 514, 0, "", "", 297.303},
    {"occt_propeller.stl", FileFormat::Stl, 1, 0, 1, 0, 0, "", "", 1358.68},
};

INSTANTIATE_TEST_SUITE_P(Real, RealFilesTest, testing::ValuesIn(realFiles));

TEST(RealDamageTest, ASolidWithoutItsFacesIsTold) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/bad_dangling_faces.stp", FileFormat::Step);
    EXPECT_EQ(countsOf(document).solids, 0U);
    EXPECT_EQ(countsOf(document).faces, 263U);
    EXPECT_EQ(countsOf(document).edges, 895U);
    EXPECT_EQ(findingCount(document, "shape.no-solid"), 1U);
    EXPECT_EQ(findingCount(readReal("nist_ftc_07_asme1_ap242-e2.stp", FileFormat::Step),
                           "shape.no-solid"),
              0U);
}

TEST(RealDamageTest, AMissingUnitIsToldAndTakenAsMillimetres) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/bad_no_unit.stp", FileFormat::Step);
    EXPECT_EQ(findingCount(document, "unit.missing"), 1U);
    EXPECT_EQ(document.unit, "");
    EXPECT_NEAR(extentOf(document).Diagonal(), 160.312, 0.01);
    EXPECT_EQ(findingCount(readReal("gen_bracket.stp", FileFormat::Step), "unit.missing"), 0U);
}

TEST(RealDamageTest, CoordinatesThatAreNoNumbersDoNotSpoilTheBox) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/bad_nan_coord.stp", FileFormat::Step);
    EXPECT_GT(findingCount(document, "shape.absurd"), 0U);
    EXPECT_GT(findingCount(document, "record.damaged"), 0U);
    EXPECT_LT(extentOf(document).Diagonal(), 200);
    EXPECT_EQ(countsOf(document).solids, 3U);
    EXPECT_EQ(countsOf(document).faces, 39U);
    EXPECT_EQ(countsOf(document).edges, 73U);
    EXPECT_NO_THROW(checkDocument(document));
}

TEST(RealDamageTest, AFileWithAHeaderAloneHasNoShape) {
    KESVIEW_NEEDS_DATA();
    EXPECT_EQ(findingCount(readReal("bad/bad_header_only.stp", FileFormat::Step), "shape.none"),
              1U);
}

TEST(RealDamageTest, ACutIgesFileIsTold) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/bad_truncated.iges", FileFormat::Iges);
    EXPECT_EQ(findingCount(document, "file.truncated"), 1U);
    EXPECT_EQ(countsOf(document).faces, 32U);
    EXPECT_EQ(countsOf(document).edges, 128U);
}

TEST(RealDamageTest, BrokenFilesAreDamaged) {
    KESVIEW_NEEDS_DATA();
    const std::vector<std::pair<std::string, FileFormat>> files = {
        {"bad/bad_count.stl", FileFormat::Stl},
        {"bad/bad_empty.stl", FileFormat::Stl},
        {"bad/bad_empty.stp", FileFormat::Step},
        {"bad/bad_truncated_ftc07.stp", FileFormat::Step},
        {"bad/lfs_pointer.stp", FileFormat::Step},
        {"bad/wrong_ext_stl.stp", FileFormat::Step},
    };
    for (const auto& [name, format] : files) {
        try {
            readReal(name, format);
            ADD_FAILURE() << name << " was read";
        } catch (const ReadError& error) {
            EXPECT_EQ(error.Failure(), ReadFailure::Damaged) << name;
        }
    }
}

TEST(RealDamageTest, ACountThatDoesNotFitTellsTheMissingBytes) {
    KESVIEW_NEEDS_DATA();
    try {
        readReal("bad/bad_count.stl", FileFormat::Stl);
        FAIL() << "it was read";
    } catch (const ReadError& error) {
        // a million triangles of 50 bytes behind 84 are announced, the file has 684
        EXPECT_THAT(error.what(), testing::HasSubstr("49999400 bytes"));
    }
}

TEST(RealDamageTest, DegenerateTrianglesAreCounted) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/bad_degenerate.stl", FileFormat::Stl);
    EXPECT_EQ(countsOf(document).triangles, 12U);
    EXPECT_EQ(findingCount(document, "mesh.degenerate"), 3U);
}

TEST(RealOddityTest, BothSolidsOfAnStlAreRead) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/odd_two_solids.stl", FileFormat::Stl);
    ASSERT_EQ(document.products.at(0).bodies.size(), 2U);
    EXPECT_EQ(document.products[0].bodies[0].name, "testTriangle_1");
    EXPECT_EQ(document.products[0].bodies[1].name, "testTriangle_2");
}

TEST(RealOddityTest, AHugeOffsetKeepsTheShapeExactly) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/odd_huge_offset.stp", FileFormat::Step);
    const Extent extent = extentOf(document);
    EXPECT_EQ(extent.low, (Vector{1e8, 1e8, 1e8}));
    EXPECT_EQ(extent.high, (Vector{1e8 + 1, 1e8 + 2, 1e8 + 3}));
    EXPECT_NEAR(volumeOf(document.products.at(0).bodies.at(0)), 6, 1e-6);
}

TEST(RealOddityTest, NamesInOtherAlphabetsAreUtf8) {
    KESVIEW_NEEDS_DATA();
    const Document document = readReal("bad/odd_names_unicode.stp", FileFormat::Step);
    std::vector<std::string> names;
    for (const Product& product : document.products) {
        names.push_back(product.name);
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("BRACKET_ASM", "Träger 'A' 日本", "軸0 Ä M8"));
}

TEST(RealOddityTest, AFormatIsReadWhateverTheFileIsCalled) {
    KESVIEW_NEEDS_DATA();
    EXPECT_EQ(countsOf(readReal("bad/wrong_ext_stl.stp", FileFormat::Stl)).triangles, 1U);
}

}  // namespace
}  // namespace kesview
