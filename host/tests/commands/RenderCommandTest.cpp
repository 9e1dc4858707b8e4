#include "CommandKit.h"
#include "commands/RenderCommand.h"
#include "support/FileContent.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace kesview {
namespace {

using support::annotatedMachine;
using support::Answer;
using support::run;
using testing::HasSubstr;

/// Keeps what it was asked to draw, and answers a picture of one colour.
class PretendDrawing : public Drawing {
public:
    explicit PretendDrawing(Picture& seen) : _seen(seen) {}
    Image Draw(const Picture& picture) override {
        _seen = picture;
        Image image{picture.width, picture.height, {}};
        image.pixels.assign(
            3 * static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
            77);
        return image;
    }

private:
    Picture& _seen;
};

class RenderCommandTest : public testing::Test {
protected:
    RenderCommandTest() {
        _tools.makeDrawing = [this] { return std::make_unique<PretendDrawing>(_picture); };
    }

    Answer render(std::vector<std::string> more = {}) {
        std::vector<std::string> arguments = {"render", "machine.stp", "-q", "-o", output()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments, _tools);
    }
    std::size_t polylines() const {
        std::size_t count = 0;
        for (const LineBatch& batch : _picture.lines) {
            count += batch.starts.size();
        }
        return count;
    }
    std::string output() const { return _folder.File("out.png"); }

    const support::TemporaryFolder _folder;
    Tools _tools = support::toolsReading(annotatedMachine());
    Picture _picture;
};

TEST_F(RenderCommandTest, WritesAPngOfTheSizeThatWasAskedFor) {
    const Answer answer = render({"--size", "64x48"});
    EXPECT_EQ(answer.code, ExitCode::Done) << answer.err;
    const std::string bytes = support::contentOfFile(output());
    ASSERT_GT(bytes.size(), 24U);
    EXPECT_EQ(bytes.substr(1, 3), "PNG");
    EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\0\x40\0\0\0\x30", 8));  // the header's size
    EXPECT_EQ(_picture.width, 64);
    EXPECT_EQ(_picture.height, 48);
}

TEST_F(RenderCommandTest, SaysWhatWasDrawn) {
    EXPECT_EQ(render({"--view", "top"}).out,
              output() + "  1600 x 1000  view top, 17 triangles, 2 annotations\n");
    const Answer json = render({"--format", "json", "--view", "Front"});
    EXPECT_EQ(support::violations("render", json.out), "");
    EXPECT_THAT(json.out, HasSubstr("\"view\": \"Front\""));
    EXPECT_THAT(json.out, HasSubstr("\"annotations\": 1"));
}

TEST_F(RenderCommandTest, EdgesAndBackgroundAreAsAskedFor) {
    render({"--no-edges", "--background", "black,#102030", "--pmi", "none"});
    EXPECT_EQ(polylines(), 1U);  // the seam, which is a body of its own and no edge of one
    EXPECT_EQ(_picture.background, (Color{0, 0, 0, 255}));
    EXPECT_EQ(_picture.backgroundTop, (Color{16, 32, 48, 255}));
    render({});
    EXPECT_EQ(polylines(), 5U);  // and those of four bolts
}

TEST_F(RenderCommandTest, ASectionReachesThePicture) {
    render({"--section", "x=0.5"});
    ASSERT_TRUE(_picture.clipping.has_value());
    EXPECT_EQ(_picture.clipping->point[0], 0.5);
    EXPECT_FALSE(_picture.clipsAnnotations);
}

TEST_F(RenderCommandTest, WhereNothingCanDrawTheExitCodeIsSixAndNoFileStands) {
    const Answer answer = run({"render", "a.stp", "-q", "-o", output()}, annotatedMachine());
    EXPECT_EQ(answer.code, ExitCode::CannotDraw);
    EXPECT_EQ(answer.err, "kesview: error: There is nothing to draw with: install it.\n");
    EXPECT_FALSE(std::filesystem::exists(output()));
}

TEST_F(RenderCommandTest, AnOutputThatCannotBeWrittenIsNotTheFilesFault) {
    const Answer answer =
        run({"render", "a.stp", "-q", "-o", output() + "/no/such/folder.png"}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Unreadable);
    EXPECT_THAT(answer.err, HasSubstr("no/such/folder.png"));
}

TEST_F(RenderCommandTest, TheFileThatIsReadIsNeverWritten) {
    const std::string input = _folder.Write("in.stp", "kept");
    for (const char* const verb : {"render", "report"}) {
        const Answer answer = run({verb, input, "-o", _folder.File("./in.stp")}, _tools);
        EXPECT_EQ(answer.code, ExitCode::Usage) << verb;
        EXPECT_THAT(answer.err, HasSubstr("is the file to read")) << verb;
    }
    EXPECT_EQ(std::filesystem::file_size(input), 4U);
}

TEST_F(RenderCommandTest, AFolderThatIsNotThereIsSaidBeforeReading) {
    _tools.read = [](const std::string&, const ReadOptions&, const ReadProgress&) -> Document {
        throw ReadError(ReadFailure::Damaged, "it was read");
    };
    const Answer answer = run({"render", "a.stp", "-o", _folder.File("no/a.png")}, _tools);
    EXPECT_EQ(answer.code, ExitCode::Unreadable);
    EXPECT_THAT(answer.err, HasSubstr("there is no folder"));
}

TEST_F(RenderCommandTest, WrongBackgroundsAndSelectorsAreUsageErrorsBeforeAnythingIsDrawn) {
    EXPECT_EQ(render({"--background", "pink"}).code, ExitCode::Usage);
    EXPECT_EQ(render({"--hide", "Bolf"}).code, ExitCode::Usage);
    EXPECT_EQ(render({"--view", "Frnt"}).code, ExitCode::Usage);
    EXPECT_FALSE(std::filesystem::exists(output()));
}

}  // namespace
}  // namespace kesview
