/// @file
/// What kesview takes from a command line: every line is refused with an error of the parser, or
/// leaves values within their ranges; patterns match as the slowest search finds, and ids are read
/// as they are written.

#include "Input.h"
#include "building/PathPattern.h"
#include "building/SceneIds.h"
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
    } while (!input.IsAtEnd() && input.Below(4) == 0);
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

// --- selectors ----------------------------------------------------------------------------------

std::string fewLetters(Input& input) {
    static const char* const letters[] = {"*", "?", "/", "\\", "a", "b", "\xC3\xA9", "**"};
    std::string made;
    for (unsigned left = input.Below(10); left > 0; --left) {
        made += input.Below(16) == 0 ? std::string(1, static_cast<char>(input.Byte()))
                                     : letters[input.Below(std::size(letters))];
    }
    return made;
}

/// A letter of a pattern or name, which is all its bytes; whether a backslash led it.
struct Letter {
    std::string bytes;
    bool led = false;
};
using Name = std::vector<Letter>;

/// The names between slashes; bytes that go on a letter of UTF-8 belong to it.
std::vector<Name> namesIn(const std::string& text) {
    std::vector<Name> names(1);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '/') {
            names.emplace_back();
            continue;
        }
        const bool leads = text[at] == '\\' && at + 1 < text.size();
        at += leads ? 1U : 0U;
        const bool goesOn = !leads && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
        if (goesOn && !names.back().empty()) {
            names.back().back().bytes += text[at];
        } else {
            names.back().push_back({std::string(1, text[at]), leads});
        }
    }
    return names;
}

bool isWild(const Letter& letter, const char* sign) {
    return !letter.led && letter.bytes == sign;
}

bool isAnyNames(const Name& name) {
    return name.size() == 2 && isWild(name[0], "*") && isWild(name[1], "*");
}

/// Where many signs stand for any letters the slowest search would take for ever.
struct TooSlow {};

/// Counts down to the end of the slowest search's patience.
void takeStep(std::size_t& stepsLeft) {
    if (stepsLeft-- == 0) {
        throw TooSlow();
    }
}

bool matches(const Name& pattern, std::size_t at, const Name& name, std::size_t nameAt,
             std::size_t& stepsLeft) {
    takeStep(stepsLeft);
    if (at == pattern.size()) {
        return nameAt == name.size();
    }
    if (isWild(pattern[at], "*")) {
        return matches(pattern, at + 1, name, nameAt, stepsLeft) ||
               (nameAt < name.size() && matches(pattern, at, name, nameAt + 1, stepsLeft));
    }
    return nameAt < name.size() &&
           (isWild(pattern[at], "?") || pattern[at].bytes == name[nameAt].bytes) &&
           matches(pattern, at + 1, name, nameAt + 1, stepsLeft);
}

bool matches(const std::vector<Name>& pattern, std::size_t at, const std::vector<Name>& path,
             std::size_t pathAt, std::size_t& stepsLeft) {
    takeStep(stepsLeft);
    if (at == pattern.size()) {
        return pathAt == path.size();
    }
    if (isAnyNames(pattern[at])) {
        return matches(pattern, at + 1, path, pathAt, stepsLeft) ||
               (pathAt < path.size() && matches(pattern, at, path, pathAt + 1, stepsLeft));
    }
    return pathAt < path.size() && matches(pattern[at], 0, path[pathAt], 0, stepsLeft) &&
           matches(pattern, at + 1, path, pathAt + 1, stepsLeft);
}

/// Bytes that are no letters of UTF-8 have no meaning that could be predicted.
bool isWhole(const std::string& text) {
    std::size_t open = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool goesOn = (byte & 0xC0U) == 0x80U;
        if (goesOn != (open > 0) || (byte >= 0x80 && !goesOn && byte != 0xC3)) {
            return false;
        }
        open = goesOn ? open - 1 : byte == 0xC3 ? 1 : 0;
    }
    return open == 0 && text.find("\\\xC3") == std::string::npos;
}

void matchPaths(Input& input) {
    const std::string text = fewLetters(input);
    const std::string path = fewLetters(input);
    const PathPattern pattern(text);
    const bool matched = pattern.Matches(path);
    const bool below = pattern.CanMatchBelow(path);
    // A backslash at the end would lead the slash.
    const bool goesOn = namesOfPath(path + "/").size() > namesOfPath(path).size();
    Check(below || !goesOn || !pattern.Matches(path + "/" + fewLetters(input)),
          "what matches below can match below");

    const std::string name = fewLetters(input);
    Check(namesOfPath(escapedForPath(name)) == std::vector<std::string>{name},
          "a name is one name of its path");
    Check(name.empty() ||
              PathPattern("/**/" + escapedForPath(name)).Matches(escapedForPath(name)) ||
              name.find_first_of("*?") != std::string::npos || !isWhole(name),
          "a path matches itself");
    if (!isWhole(text) || !isWhole(path)) {
        return;
    }
    const bool fromTop = !text.empty() && text.front() == '/';
    std::vector<Name> expected = namesIn(fromTop ? text.substr(1) : "**/" + text);
    std::size_t stepsLeft = 1'000'000;
    try {
        Check(matched == (!path.empty() && matches(expected, 0, namesIn(path), 0, stepsLeft)),
              "a pattern matches as the slowest search finds");
    } catch (const TooSlow&) {
        return;
    }
}

void readIds(Input& input) {
    std::string given;
    for (unsigned left = 1 + input.Below(4); left > 0; --left) {
        given += std::to_string(input.Flag() ? input.Byte() : input.Any<std::uint64_t>());
        given += left > 1 ? "/" : "";
    }
    const auto path = parseRenderId(given);
    Check(path && renderIdText(*path) == given, "a path is read as it is written");
    const std::string other = input.Flag() ? fewLetters(input) : text(input);
    const auto otherPath = parseRenderId(other);
    Check(!otherPath || parseRenderId(renderIdText(*otherPath)) == otherPath,
          "what was read is written so that it is read");
    static const char* const words[] = {"instance", "product", "body",
                                        "face",     "edge",    "annotation"};
    const unsigned word = input.Below(6);
    const std::uint64_t id = input.Any<std::uint64_t>();
    const auto entity = parseEntityText(words[word] + (":" + std::to_string(id)));
    Check(entity && static_cast<unsigned>(entity->kind) == word && entity->id == id,
          "the word and number of an entity");
    Check(!parseEntityText(words[word] + (":" + std::to_string(id) + other)) || other.empty() ||
              other.find_first_not_of("0123456789") == std::string::npos,
          "nothing stands behind the number");
    parseEntityText(other);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    switch (input.Below(5)) {
        case 0:
            parseLine(input);
            break;
        case 1:
            parsePairs(input);
            break;
        case 2:
            readIds(input);
            break;
        default:
            matchPaths(input);
            break;
    }
    return 0;
}
