/// @file
/// What kesview takes from a command line: every line is refused with an error of the parser, or
/// leaves values within their ranges.

#include "Input.h"
#include "commands/OptionParsers.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>
#include <vector>

using namespace kesview;
using Fuzz::Check;
using Fuzz::Input;

namespace {

const char* const words[] = {
    "FILE",   "--format",  "json",        "--time-limit", "--memory-limit", "12G", "0.5",
    "nan",    "inf",       "-1",          "1e7",          "--view",         "iso", "--size",
    "16384x", "1x1",       "--pmi",       "view",         "--edges",        "x=1", "--no-edges",
    "--hide", "--isolate", "--highlight", "--section",    "none",           "-q",  "--",
    "--time", "-v",        "=",           "--help"};

std::string text(Input& input) {
    std::string made;
    for (unsigned left = input.Below(12); left > 0; --left) {
        made += static_cast<char>(input.Byte());
    }
    return made;
}

std::string word(Input& input) {
    std::string made;
    do {
        made += input.Below(4) == 0 ? text(input) : words[input.Below(std::size(words))];
    } while (input.Below(4) == 0);
    return made;
}

bool isSide(int pixels) {
    return pixels >= 1 && pixels <= 16384;
}

void parseLine(Input& input) {
    CLI::App app;
    CommonOptions common;
    SceneOptions scene;
    addCommonOptions(app, common);
    addSceneOptions(app, scene);
    std::vector<std::string> line;
    while (!input.IsAtEnd() && line.size() < 16) {
        line.push_back(word(input));
    }
    std::reverse(line.begin(), line.end());  // as the parser takes them
    try {
        app.parse(line);
    } catch (const CLI::Error&) {
        return;
    }
    using std::chrono::milliseconds;
    Check(common.timeLimit >= milliseconds(1) && common.timeLimit <= milliseconds(10'000'000'000),
          "a time limit within its range");
    Check(common.memoryLimit > 0, "some memory");
    Check(isSide(scene.width) && isSide(scene.height), "a picture within its range");
    const auto named = [](const std::string& selector) { return !selector.empty(); };
    for (const auto& selectors : {scene.hide, scene.isolate, scene.highlight}) {
        Check(std::all_of(selectors.begin(), selectors.end(), named), "selectors name something");
    }
}

/// A pair of numbers is read as it is written, and nothing else is a pair.
void parsePairs(Input& input) {
    const std::string given = input.Flag() ? text(input)
                                           : std::to_string(input.Any<std::int16_t>()) +
                                                 (input.Flag() ? "x" : ",") +
                                                 std::to_string(input.Any<std::int32_t>());
    int x = 0;
    int y = 0;
    try {
        parseSize(given, x, y);
        Check(isSide(x) && isSide(y), "sides within their range");
    } catch (const CLI::ValidationError&) {
    }
    try {
        parsePixel(given, x, y);
    } catch (const CLI::ValidationError&) {
        return;
    }
    int againX = 0;
    int againY = 0;
    parsePixel(std::to_string(x) + "," + std::to_string(y), againX, againY);
    Check(againX == x && againY == y, "a pixel is read as it is written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    if (input.Flag()) {
        parseLine(input);
    } else {
        parsePairs(input);
    }
    return 0;
}
