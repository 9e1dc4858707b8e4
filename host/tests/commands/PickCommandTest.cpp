#include "CommandKit.h"
#include "commands/PickCommand.h"
#include "support/DocumentKit.h"

#include <gmock/gmock.h>

#include <cmath>
#include <nlohmann/json.hpp>

namespace kesview {
namespace {

using support::Answer;
using support::golden;
using support::run;
using testing::HasSubstr;

/// One bolt: two squares of side 1, at z = 0 and 5, and an edge from the origin along x, with the
/// annotations of the machine. Seen from above, the upper square fills the picture.
Document bolt() {
    Document document;
    document.products = {support::boltProduct(10)};
    document.roots = {support::component(50, "Bolt", 0)};
    support::addAnnotations(document);
    return document;
}

std::vector<std::string> from(const std::string& view, const std::string& at) {
    return {"pick", "bolt.stp", "--view", view, "--at", at, "--size", "200x200", "--pmi", "none"};
}

/// Keys as they stand; the point and the distance to a micrometre, as their last digits are chance.
std::string withRoundedHit(const std::string& text) {
    nlohmann::ordered_json json = nlohmann::ordered_json::parse(text);
    const auto round = [](nlohmann::ordered_json& number) {
        number = std::round(number.get<double>() * 1000) / 1000;
    };
    for (nlohmann::ordered_json& coordinate : json["what"]["point"]) {
        round(coordinate);
    }
    round(json["what"]["distance"]);
    return json.dump(2) + "\n";
}

nlohmann::json jsonOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--format", "json"});
    const Answer answer = run(arguments, bolt());
    EXPECT_EQ(support::violations("pick", answer.out), "");
    return nlohmann::json::parse(answer.out);
}

TEST(PickCommandTest, AFaceWithWhatSpeaksOfIt) {
    const Answer answer = run(from("top", "100,80"), bolt());
    EXPECT_EQ(answer.code, ExitCode::Done) << answer.err;
    EXPECT_EQ(answer.out, golden("pick.txt", answer.out));
}

TEST(PickCommandTest, Json) {
    std::vector<std::string> arguments = from("top", "100,80");
    arguments.insert(arguments.end(), {"--format", "json"});
    const Answer answer = run(arguments, bolt());
    const std::string rounded = withRoundedHit(answer.out);
    EXPECT_EQ(rounded, golden("pick.json", rounded));
    EXPECT_EQ(support::violations("pick", answer.out), "");
}

TEST(PickCommandTest, FromBelowTheOtherFaceIsHit) {
    const nlohmann::json json = jsonOf(from("bottom", "100,80"));
    EXPECT_EQ(json["what"]["entity"], "face:12");
    EXPECT_NEAR(json["what"]["point"][2].get<double>(), 0, 1e-6);
}

TEST(PickCommandTest, WhatIsHiddenIsNotHit) {
    std::vector<std::string> arguments = from("top", "100,80");
    arguments.insert(arguments.end(), {"--hide", "face:13"});
    EXPECT_EQ(jsonOf(arguments)["what"]["entity"], "face:12");
}

TEST(PickCommandTest, NothingIsAnAnswerToo) {
    const Answer answer = run(from("top", "0,0"), bolt());
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.out, "nothing\n");
    EXPECT_EQ(jsonOf(from("top", "0,0"))["hit"], false);
}

TEST(PickCommandTest, PixelsOutsideAreUsageErrors) {
    for (const char* at : {"200,0", "0,200", "-1,5"}) {
        const Answer answer = run(from("top", at), bolt());
        EXPECT_EQ(answer.code, ExitCode::Usage) << at;
        EXPECT_THAT(answer.err, HasSubstr("outside")) << at;
    }
}

}  // namespace
}  // namespace kesview
