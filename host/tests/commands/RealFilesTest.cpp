#include "ProgramKit.h"
#include "support/RealFiles.h"

#include <gmock/gmock.h>

#include <cctype>
#include <map>
#include <nlohmann/json.hpp>

namespace kesview {
namespace {

using support::ProgramAnswer;
using support::runProgram;
using testing::IsEmpty;
using testing::StartsWith;

/// What becomes of a file: the exit codes of reading it, and of check.
struct Expected {
    int read = 0;
    int check = 0;
};

const std::map<std::string, Expected>& files() {
    static const std::map<std::string, Expected> all = {{"fw_printable_case_full.stp", {0, 1}},
                                                        {"gen_big_40x25.stp", {0, 0}},
                                                        {"gen_bracket.stp", {0, 1}},
                                                        {"nist_ctc_01_asme1_ap242-e1.stp", {0, 1}},
                                                        {"nist_ctc_02_asme1_ap203.stp", {0, 1}},
                                                        {"nist_ctc_05_asme1_ap242-e1.stp", {0, 1}},
                                                        {"nist_ftc_07_asme1_ap242-e2.stp", {0, 1}},
                                                        {"nist_ftc_11_asme1_ap242-e1.stp", {0, 1}},
                                                        {"nist_stc_08_asme1_ap242-e3.stp", {0, 1}},
                                                        {"occt_Motor-c.brep", {0, 0}},
                                                        {"occt_bearing.iges", {0, 0}},
                                                        {"occt_propeller.stl", {0, 1}},
                                                        {"occt_screw.step", {0, 0}},
                                                        {"odrive_pcb_v3.5.step", {0, 0}},
                                                        {"bad/bad_count.stl", {5, 5}},
                                                        {"bad/bad_dangling_faces.stp", {0, 1}},
                                                        {"bad/bad_degenerate.stl", {0, 1}},
                                                        {"bad/bad_empty.stl", {5, 5}},
                                                        {"bad/bad_empty.stp", {5, 5}},
                                                        {"bad/bad_header_only.stp", {0, 1}},
                                                        {"bad/bad_nan_coord.stp", {0, 1}},
                                                        {"bad/bad_no_unit.stp", {0, 1}},
                                                        {"bad/bad_truncated.iges", {0, 1}},
                                                        {"bad/bad_truncated_ftc07.stp", {5, 5}},
                                                        {"bad/lfs_pointer.stp", {4, 4}},
                                                        {"bad/odd_huge_offset.stp", {0, 0}},
                                                        {"bad/odd_names_unicode.stp", {0, 1}},
                                                        {"bad/odd_two_solids.stl", {0, 0}},
                                                        {"bad/wrong_ext_stl.stp", {0, 0}}};
    return all;
}

class RealFilesTest : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        KESVIEW_NEEDS_DATA();
        _path = support::realFile(GetParam());
        _expected = files().at(GetParam());
    }

    /// Data or one clear error, never both, never a crash or a hang.
    void expectAnswer(const std::string& verb, int code) const {
        const ProgramAnswer answer = runProgram({verb, _path, "--format", "json"});
        EXPECT_FALSE(answer.hung) << verb;
        EXPECT_EQ(answer.code, code) << verb << "\n" << answer.err;
        if (code > 1) {
            EXPECT_THAT(answer.out, IsEmpty()) << verb;
            EXPECT_THAT(answer.err, StartsWith("kesview: error: ")) << verb;
            return;
        }
        const nlohmann::json json = nlohmann::json::parse(answer.out, nullptr, false);
        ASSERT_FALSE(json.is_discarded()) << verb;
        EXPECT_EQ(json["verb"], verb);
        EXPECT_EQ(json["file"], _path);
    }

    std::string _path;
    Expected _expected;
};

std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const auto& [name, expected] : files()) {
        all.push_back(name);
    }
    return all;
}

/// Letters and digits, as names of tests must be.
std::string testNameOf(const testing::TestParamInfo<std::string>& file) {
    std::string name = file.param;
    for (char& letter : name) {
        letter = std::isalnum(static_cast<unsigned char>(letter)) != 0 ? letter : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, RealFilesTest, testing::ValuesIn(names()), testNameOf);

TEST_P(RealFilesTest, InfoTreePmiAndViewsAnswerOrSayWhyNot) {
    for (const char* verb : {"info", "tree", "pmi", "views"}) {
        expectAnswer(verb, _expected.read);
    }
}

TEST_P(RealFilesTest, CheckSaysWhatIsBroken) {
    expectAnswer("check", _expected.check);
}

}  // namespace
}  // namespace kesview
