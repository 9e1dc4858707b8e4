/// @file
/// See ExchangeUnits.h.

#include "reading/part21/ExchangeUnits.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace kesview {
namespace {

constexpr int deepestUnit = 8;

double prefixFactor(const std::string& prefix) {
    static const std::array<std::pair<const char*, double>, 16> prefixes = {{{"EXA", 1e18},
                                                                             {"PETA", 1e15},
                                                                             {"TERA", 1e12},
                                                                             {"GIGA", 1e9},
                                                                             {"MEGA", 1e6},
                                                                             {"KILO", 1e3},
                                                                             {"HECTO", 1e2},
                                                                             {"DECA", 1e1},
                                                                             {"DECI", 1e-1},
                                                                             {"CENTI", 1e-2},
                                                                             {"MILLI", 1e-3},
                                                                             {"MICRO", 1e-6},
                                                                             {"NANO", 1e-9},
                                                                             {"PICO", 1e-12},
                                                                             {"FEMTO", 1e-15},
                                                                             {"ATTO", 1e-18}}};
    for (const auto& [name, factor] : prefixes) {
        if (prefix == name) {
            return factor;
        }
    }
    return 1;
}

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

ExchangeUnit readUnitWithin(const ExchangeFile& file, EntityNumber number, int depth);

std::optional<ExchangeMeasure> readMeasureWithin(const ExchangeFile& file, EntityNumber number,
                                                 int depth) {
    const ExchangeInstance instance = file.Get(number);
    const std::size_t first = instance.Is("MEASURE_REPRESENTATION_ITEM") ? 1 : 0;
    const ExchangeValue& value = instance.Attribute("MEASURE_WITH_UNIT", 0, first).Unwrapped();
    if (!value.IsNumber()) {
        return std::nullopt;
    }
    const ExchangeValue& unit = instance.Attribute("MEASURE_WITH_UNIT", 1, first + 1);
    return ExchangeMeasure{value.number, readUnitWithin(file, unit.reference, depth + 1)};
}

ExchangeUnit readSiUnit(const ExchangeInstance& instance) {
    const std::string& prefix = instance.Attribute("SI_UNIT", 0, 1).text;
    const std::string& name = instance.Attribute("SI_UNIT", 1, 2).text;
    ExchangeUnit unit;
    unit.factor = prefixFactor(prefix);
    unit.name = lowerCase(prefix + name);
    if (name == "METRE") {
        unit.quantity = Quantity::Length;
        unit.factor *= 1000;
    } else if (name == "RADIAN") {
        unit.quantity = Quantity::Angle;
    }
    return unit;
}

ExchangeUnit readUnitWithin(const ExchangeFile& file, EntityNumber number, int depth) {
    const ExchangeInstance instance = file.Get(number);
    if (instance.Is("SI_UNIT")) {
        return readSiUnit(instance);
    }
    ExchangeUnit unit;
    if (!instance.HasTypeEnding("CONVERSION_BASED_UNIT") || depth > deepestUnit) {
        return unit;
    }
    unit.name = lowerCase(instance.Attribute("CONVERSION_BASED_UNIT", 0, 1).text);
    const EntityNumber factor = instance.Attribute("CONVERSION_BASED_UNIT", 1, 2).reference;
    if (const auto measure = readMeasureWithin(file, factor, depth)) {
        unit.quantity = measure->unit.quantity;
        unit.factor = measure->Scaled();
    }
    return unit;
}

}  // namespace

ExchangeUnit readUnit(const ExchangeFile& file, EntityNumber unit) {
    return readUnitWithin(file, unit, 0);
}

std::optional<ExchangeMeasure> readMeasure(const ExchangeFile& file, EntityNumber measure) {
    return readMeasureWithin(file, measure, 0);
}

ContextUnits readContextUnits(const ExchangeFile& file, EntityNumber context) {
    ContextUnits units;
    const ExchangeInstance instance = file.Get(context);
    const ExchangeValue& list = instance.Attribute("GLOBAL_UNIT_ASSIGNED_CONTEXT", 0, 2);
    for (const EntityNumber number : list.References()) {
        const ExchangeUnit unit = readUnit(file, number);
        if (unit.quantity == Quantity::Length && unit.factor > 0) {
            units.length = unit.factor;
        } else if (unit.quantity == Quantity::Angle && unit.factor > 0) {
            units.angle = unit.factor;
        }
    }
    return units;
}

ContextUnits readDefaultUnits(const ExchangeFile& file) {
    for (const EntityNumber context : file.OfType("GLOBAL_UNIT_ASSIGNED_CONTEXT")) {
        const ContextUnits units = readContextUnits(file, context);
        if (units.length) {
            return units;
        }
    }
    return {};
}

}  // namespace kesview
