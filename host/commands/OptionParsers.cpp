#include "commands/OptionParsers.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <system_error>

namespace kesview {

namespace {

constexpr int kLargestSide = 16384;  // pixels; what graphics take

/// Both numbers of "10,20" or "10x20"; false for another form.
bool parsePair(const std::string& text, char separator, int& first, int& second) {
    const char* const end = text.data() + text.size();
    const auto [middle, error] = std::from_chars(text.data(), end, first);
    if (error != std::errc() || middle == end || *middle != separator) {
        return false;
    }
    const auto [stop, error2] = std::from_chars(middle + 1, end, second);
    return error2 == std::errc() && stop == end;
}

std::uint64_t parseBytes(const std::string& text) {
    std::uint64_t bytes = 0;
    const char* const end = text.data() + text.size();
    const auto [unit, error] = std::from_chars(text.data(), end, bytes);
    static const std::map<std::string, unsigned> shifts = {
        {"", 0}, {"k", 10}, {"K", 10}, {"m", 20}, {"M", 20}, {"g", 30}, {"G", 30}};
    const auto shift = shifts.find(std::string(unit, end));
    const bool known = error == std::errc() && bytes > 0 && shift != shifts.end();
    if (!known || bytes > std::numeric_limits<std::uint64_t>::max() >> shift->second) {
        throw CLI::ValidationError("--memory-limit",
                                   "\"" + text + "\" is no number of bytes, as 800M or 12G is");
    }
    return bytes << shift->second;
}

void addLimits(CLI::App& app, CommonOptions& options) {
    app.add_option_function<double>(
           "--time-limit",
           [&options](const double& seconds) {
               if (std::isnan(seconds)) {  // which is neither below nor above the range
                   throw CLI::ValidationError("--time-limit", "not a number of seconds");
               }
               options.timeLimit =
                   std::chrono::milliseconds(static_cast<std::int64_t>(seconds * 1000));
           },
           "Give up after so many seconds (600)")
        ->check(CLI::Range(0.001, 1e7).description(""))
        ->type_name("SECONDS");
    app.add_option_function<std::string>(
           "--memory-limit",
           [&options](const std::string& text) { options.memoryLimit = parseBytes(text); },
           "Give up reading with more memory than this (12G)")
        ->type_name("BYTES[K|M|G]");
}

}  // namespace

CLI::Validator notEmpty() {
    return CLI::Validator(
        [](const std::string& text) {
            return text.empty() ? std::string("an empty text names nothing") : std::string();
        },
        "");
}

void parsePixel(const std::string& text, int& x, int& y) {
    if (!parsePair(text, ',', x, y)) {
        throw CLI::ValidationError("--at", "\"" + text + "\" is not X,Y, as 800,500 is");
    }
}

void parseSize(const std::string& text, int& width, int& height) {
    const bool whole = parsePair(text, 'x', width, height);
    if (!whole || width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) {
        throw CLI::ValidationError(
            "--size", "\"" + text + "\" is not WxH with sides from 1 to 16384, as 1600x1000 is");
    }
}

void addCommonOptions(CLI::App& app, CommonOptions& options) {
    static const std::map<std::string, OutputFormat> formats = {{"text", OutputFormat::Text},
                                                                {"json", OutputFormat::Json}};
    app.set_help_flag("-h,--help", "Print this help");
    app.add_option("FILE", options.file, "The file to read: STEP, IGES, BREP or STL")
        ->required()
        ->type_name("");
    app.add_option_function<std::string>(
           "--format", [&options](const std::string& text) { options.format = formats.at(text); },
           "Print text or json (text)")
        ->check(CLI::IsMember({"text", "json"}).description(""))
        ->type_name("text|json");
    app.add_flag("-q,--quiet", options.quiet, "Say errors alone");
    app.add_flag("-v,--verbose", options.verbose, "Say also what is no warning");
    app.add_flag("--time", options.time, "Say how long each stage took");
    addLimits(app, options);
}

void addSceneOptions(CLI::App& app, SceneOptions& options) {
    static const std::map<std::string, ShownPmi> shown = {
        {"all", ShownPmi::All}, {"none", ShownPmi::None}, {"view", ShownPmi::View}};
    app.add_option("--view", options.view,
                   "A saved view, or iso, front, back, left, right, top, bottom (iso)")
        ->check(notEmpty())
        ->type_name("NAME");
    app.add_option_function<std::string>(
           "--size",
           [&options](const std::string& text) { parseSize(text, options.width, options.height); },
           "Of the picture, in pixels (1600x1000)")
        ->type_name("WxH");
    app.add_option_function<std::string>(
           "--pmi", [&options](const std::string& text) { options.pmi = shown.at(text); },
           "Which annotations: all, none, or those of the saved view")
        ->check(CLI::IsMember({"all", "none", "view"}).description(""))
        ->type_name("all|none|view");
    app.add_flag("--edges,!--no-edges", options.edges, "Draw edges (they are)");
    app.add_option("--hide", options.hide, "Leave out what is selected; may be repeated")
        ->check(notEmpty())
        ->type_name("SELECTOR")
        ->allow_extra_args(false);
    app.add_option("--isolate", options.isolate, "Show only what is selected; may be repeated")
        ->check(notEmpty())
        ->type_name("SELECTOR")
        ->allow_extra_args(false);
    app.add_option("--highlight", options.highlight, "Highlight what is selected; may be repeated")
        ->check(notEmpty())
        ->type_name("SELECTOR")
        ->allow_extra_args(false);
    app.add_option("--section", options.section,
                   "Cut by a plane: x=10, y=-5, nx,ny,nz,d, or none; keeps the side of smaller "
                   "coordinates")
        ->check(notEmpty())
        ->type_name("PLANE");
}

}  // namespace kesview
