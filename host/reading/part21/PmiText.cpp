/// @file
/// See PmiText.h.

#include "reading/part21/PmiText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <utility>

namespace kesview {
namespace {

constexpr double degreesPerRadian = 57.295779513082320877;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool contains(const std::string& text, const char* word) {
    return text.find(word) != std::string::npos;
}

bool isToleranceWord(const std::string& name) {
    static const std::array<const char*, 21> words = {"fcf",
                                                      "angularity",
                                                      "circular runout",
                                                      "circularity",
                                                      "coaxiality",
                                                      "concentricity",
                                                      "cylindricity",
                                                      "feature control frame",
                                                      "flatness",
                                                      "general tolerance",
                                                      "geometrical tolerance",
                                                      "line profile",
                                                      "parallelism",
                                                      "perpendicularity",
                                                      "position",
                                                      "profile of line",
                                                      "profile of surface",
                                                      "roundness",
                                                      "straightness",
                                                      "symmetry",
                                                      "total runout"};
    return std::find(words.begin(), words.end(), name) != words.end();
}

}  // namespace

std::string formatNumber(double value) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.9g", value == 0 ? 0.0 : value);
    return buffer.data();
}

std::string formatNumber(double value, int decimals) {
    std::array<char, 512> buffer{};
    const double unsignedZero = std::abs(value) < 0.5 * std::pow(10, -decimals) ? 0.0 : value;
    std::snprintf(buffer.data(), buffer.size(), "%.*f", std::clamp(decimals, 0, 12), unsignedZero);
    return buffer.data();
}

std::string formatMeasure(const ExchangeMeasure& measure, std::optional<int> decimals) {
    const bool angle = measure.unit.quantity == Quantity::Angle;
    const double value = angle ? measure.Scaled() * degreesPerRadian : measure.value;
    const bool asWritten = !angle || measure.unit.name != "radian";
    std::string text = decimals && asWritten ? formatNumber(value, *decimals) : formatNumber(value);
    return angle ? text + "°" : text;
}

std::string unitSuffix(const ExchangeUnit& unit) {
    if (unit.quantity != Quantity::Length || unit.name == "millimetre") {
        return {};
    }
    return unit.name == "inch" ? "in" : unit.name;
}

std::string modifierSymbol(const std::string& enumeration) {
    static const std::array<std::pair<const char*, const char*>, 20> symbols = {{
        {"MAXIMUM_MATERIAL_REQUIREMENT", "Ⓜ"},
        {"MAXIMUM_MATERIAL_CONDITION", "Ⓜ"},
        {"LEAST_MATERIAL_REQUIREMENT", "Ⓛ"},
        {"LEAST_MATERIAL_CONDITION", "Ⓛ"},
        {"REGARDLESS_OF_FEATURE_SIZE", "Ⓢ"},
        {"RECIPROCITY_REQUIREMENT", "Ⓡ"},
        {"FREE_STATE", "Ⓕ"},
        {"TANGENT_PLANE", "Ⓣ"},
        {"STATISTICAL_TOLERANCE", "<ST>"},
        {"COMMON_ZONE", "CZ"},
        {"SEPARATE_REQUIREMENT", "SZ"},
        {"EACH_RADIAL_ELEMENT", "EACH RADIAL ELEMENT"},
        {"MINOR_DIAMETER", "LD"},
        {"MAJOR_DIAMETER", "MD"},
        {"PITCH_DIAMETER", "PD"},
        {"TRANSLATION", "▷"},
        {"ORIENTATION", "><"},
        {"DEGREE_OF_FREEDOM_CONSTRAINT_X", "[x]"},
        {"DEGREE_OF_FREEDOM_CONSTRAINT_Y", "[y]"},
        {"DEGREE_OF_FREEDOM_CONSTRAINT_Z", "[z]"},
    }};
    for (const auto& [name, symbol] : symbols) {
        if (enumeration == name) {
            return symbol;
        }
    }
    std::string words = lowerCase(enumeration);
    std::replace(words.begin(), words.end(), '_', ' ');
    return "(" + words + ")";
}

std::optional<NamedKind> kindOfPresentation(const std::string& name) {
    const std::string word = lowerCase(name);
    if (isToleranceWord(word)) {
        return NamedKind{AnnotationKind::Tolerance, word};
    }
    if (contains(word, "datum target")) {
        return NamedKind{AnnotationKind::DatumTarget, word};
    }
    if (contains(word, "datum")) {
        return NamedKind{AnnotationKind::Datum, "datum"};
    }
    if (contains(word, "dimension")) {
        return NamedKind{AnnotationKind::Dimension, word};
    }
    if (contains(word, "surface rough") || contains(word, "surface text") ||
        contains(word, "surface finish")) {
        return NamedKind{AnnotationKind::SurfaceFinish, word};
    }
    if (contains(word, "weld")) {
        return NamedKind{AnnotationKind::Weld, word};
    }
    if (contains(word, "note")) {
        return NamedKind{AnnotationKind::Note, word};
    }
    return std::nullopt;
}

}  // namespace kesview
