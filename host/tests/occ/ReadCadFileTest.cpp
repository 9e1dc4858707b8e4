#include "document/CheckDocument.h"
#include "occ/Measures.h"
#include "occ/StepWriting.h"
#include "reading/occ/ReadCadFile.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace kesview {
namespace {

using support::contentOfFile;
using support::TemporaryFolder;

ReadFailure failureOf(const std::string& path, FileFormat format) {
    try {
        readCadFile(path, format, {}, {});
    } catch (const ReadError& error) {
        EXPECT_STRNE(error.what(), "");
        return error.Failure();
    }
    ADD_FAILURE() << "nothing was thrown";
    return ReadFailure::Interrupted;
}

TEST(ReadCadFileTest, AFileThatIsNotThereIsUnreadable) {
    EXPECT_EQ(failureOf("/nowhere/x.stp", FileFormat::Step), ReadFailure::Unreadable);
    EXPECT_EQ(failureOf("/nowhere/x.stl", FileFormat::Stl), ReadFailure::Unreadable);
}

TEST(ReadCadFileTest, AnEmptyFileIsDamagedWhateverItsFormat) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("empty", "");
    for (const FileFormat format :
         {FileFormat::Step, FileFormat::Iges, FileFormat::Brep, FileFormat::Stl}) {
        EXPECT_EQ(failureOf(path, format), ReadFailure::Damaged);
    }
}

TEST(ReadCadFileTest, AnUnknownFormatIsNotRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(failureOf(folder.Write("x", "x"), FileFormat::Unknown), ReadFailure::UnknownFormat);
}

TEST(ReadCadFileTest, StagesFollowEachOtherAndNoneGoesBack) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    std::vector<std::string> stages;
    double last = 0;
    readCadFile(folder.File("machine.stp"), FileFormat::Step, {},
                [&](const std::string& stage, double fraction) {
                    if (stages.empty() || stages.back() != stage) {
                        stages.push_back(stage);
                        last = 0;
                    }
                    EXPECT_GE(fraction, last);
                    EXPECT_LE(fraction, 1);
                    last = fraction;
                });
    EXPECT_EQ(stages, (std::vector<std::string>{"reading", "transferring", "tessellating"}));
}

TEST(ReadCadFileTest, StandardOutputStaysSilent) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    const std::string content = contentOfFile(folder.File("machine.stp"));
    const std::string cut = folder.Write("cut.stp", content.substr(0, content.size() / 2));
    const std::string noShape = folder.Write("x.brep", "not a shape\n");
    testing::internal::CaptureStdout();
    readCadFile(folder.File("machine.stp"), FileFormat::Step, {}, {});
    EXPECT_THROW(readCadFile(cut, FileFormat::Step, {}, {}), ReadError);
    EXPECT_THROW(readCadFile(noShape, FileFormat::Brep, {}, {}), ReadError);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ReadCadFileTest, TheSameFileGetsTheSameIds) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    const Document first = readCadFile(folder.File("machine.stp"), FileFormat::Step, {}, {});
    const Document second = readCadFile(folder.File("machine.stp"), FileFormat::Step, {}, {});
    ASSERT_EQ(first.products.size(), second.products.size());
    for (std::size_t i = 0; i < first.products.size(); ++i) {
        EXPECT_EQ(first.products[i].id, second.products[i].id);
        ASSERT_EQ(first.products[i].bodies.size(), second.products[i].bodies.size());
        for (std::size_t k = 0; k < first.products[i].bodies.size(); ++k) {
            EXPECT_EQ(first.products[i].bodies[k].id, second.products[i].bodies[k].id);
            EXPECT_EQ(first.products[i].bodies[k].faces.back().points,
                      second.products[i].bodies[k].faces.back().points);
        }
    }
}

TEST(ReadCadFileTest, WithoutPmiTheShapesAreTheSame) {
    const TemporaryFolder folder;
    writeStep(machine(), folder.File("machine.stp"));
    ReadOptions options;
    options.withPmi = false;
    const Document document =
        readCadFile(folder.File("machine.stp"), FileFormat::Step, options, {});
    EXPECT_EQ(countsOf(document).faces, 12U);
    EXPECT_TRUE(document.annotations.empty());
    EXPECT_NO_THROW(checkDocument(document));
}

}  // namespace
}  // namespace kesview
