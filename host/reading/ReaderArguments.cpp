/// @file
#include "reading/ReaderArguments.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <system_error>

namespace kesview {

namespace {

constexpr std::size_t wordCount = 6;

std::string toText(double number) {
    std::array<char, 32> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

double toNumber(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::runtime_error("'" + text + "' is not a number.");
    }
    return number;
}

bool toSwitch(const std::string& text) {
    if (text != "0" && text != "1") {
        throw std::runtime_error("'" + text + "' is neither 0 nor 1.");
    }
    return text == "1";
}

FileFormat toFormat(const std::string& text) {
    for (const FileFormat format :
         {FileFormat::Step, FileFormat::Iges, FileFormat::Brep, FileFormat::Stl}) {
        if (text == nameOf(format)) {
            return format;
        }
    }
    throw std::runtime_error("'" + text + "' is not a format.");
}

}  // namespace

std::vector<std::string> toCommandLine(const ReaderArguments& arguments) {
    const ReadOptions& options = arguments.options;
    return {arguments.path,
            nameOf(arguments.format),
            options.withPmi ? "1" : "0",
            options.withTessellation ? "1" : "0",
            toText(options.deflection),
            toText(options.angle)};
}

ReaderArguments fromCommandLine(const std::vector<std::string>& words) {
    if (words.size() != wordCount) {
        throw std::runtime_error("Expected: FILE FORMAT PMI TESSELLATION DEFLECTION ANGLE");
    }
    ReaderArguments arguments;
    arguments.path = words[0];
    arguments.format = toFormat(words[1]);
    arguments.options.withPmi = toSwitch(words[2]);
    arguments.options.withTessellation = toSwitch(words[3]);
    arguments.options.deflection = toNumber(words[4]);
    arguments.options.angle = toNumber(words[5]);
    return arguments;
}

}  // namespace kesview
