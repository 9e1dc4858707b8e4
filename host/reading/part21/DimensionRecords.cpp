/// @file
/// See DimensionRecords.h.

#include "reading/part21/DimensionRecords.h"

#include "reading/part21/PmiText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <set>
#include <unordered_map>

namespace kesview {
namespace {

/// The numbers by which the reader's document counts dimension types.
struct TypeCode {
    const char* name;
    std::int32_t code;
};
constexpr TypeCode locationCodes[] = {{"curved distance", 1},
                                      {"linear distance", 2},
                                      {"linear distance centre outer", 3},
                                      {"linear distance centre inner", 4},
                                      {"linear distance outer centre", 5},
                                      {"linear distance outer outer", 6},
                                      {"linear distance outer inner", 7},
                                      {"linear distance inner centre", 8},
                                      {"linear distance inner outer", 9},
                                      {"linear distance inner inner", 10}};
constexpr TypeCode sizeCodes[] = {{"curve length", 14},
                                  {"diameter", 15},
                                  {"spherical diameter", 16},
                                  {"radius", 17},
                                  {"spherical radius", 18},
                                  {"toroidal minor diameter", 19},
                                  {"toroidal major diameter", 20},
                                  {"toroidal minor radius", 21},
                                  {"toroidal major radius", 22},
                                  {"toroidal high major diameter", 23},
                                  {"toroidal low major diameter", 24},
                                  {"toroidal high major radius", 25},
                                  {"toroidal low major radius", 26},
                                  {"thickness", 27}};
constexpr std::size_t mostItems = 1000;  // that hold others, of one dimension

constexpr std::int32_t angularLocation = 11;
constexpr std::int32_t orientedLocation = 12;
constexpr std::int32_t locationWithPath = 13;
constexpr std::int32_t angularSize = 28;
constexpr std::int32_t sizeWithPath = 29;

template <std::size_t N>
std::int32_t codeOf(const TypeCode (&codes)[N], const std::string& name) {
    for (const TypeCode& code : codes) {
        if (name == code.name) {
            return code.code;
        }
    }
    return 0;
}

struct Values {
    std::optional<ExchangeMeasure> nominal;
    std::optional<ExchangeMeasure> lower;  ///< limits, not deviations
    std::optional<ExchangeMeasure> upper;
    std::optional<int> decimals;
    std::string note;
    std::string qualifier;
    bool basic = false;
    bool reference = false;
};

struct Deviations {
    std::optional<ExchangeMeasure> lower;
    std::optional<ExchangeMeasure> upper;
    std::string fit;  ///< "H7"
};

/// The decimals that "NR2 1.3" asks for.
std::optional<int> decimalsOf(const std::string& format) {
    const std::size_t point = format.rfind('.');
    if (point == std::string::npos || point + 1 >= format.size() ||
        std::isdigit(static_cast<unsigned char>(format[point + 1])) == 0) {
        return std::nullopt;
    }
    return std::clamp(std::atoi(format.c_str() + point + 1), 0, 12);
}

class Dimensions {
public:
    explicit Dimensions(const ExchangeFile& file) : _file(file) {
        for (const EntityNumber number : file.OfType("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION")) {
            const ExchangeInstance link = file.Get(number);
            const char* part = "DIMENSIONAL_CHARACTERISTIC_REPRESENTATION";
            _representations[link.Attribute(part, 0, 0).reference].push_back(
                link.Attribute(part, 1, 1).reference);
        }
        for (const EntityNumber number : file.OfType("PLUS_MINUS_TOLERANCE")) {
            const ExchangeInstance link = file.Get(number);
            _ranges[link.Attribute("PLUS_MINUS_TOLERANCE", 1, 1).reference] =
                link.Attribute("PLUS_MINUS_TOLERANCE", 0, 0).reference;
        }
    }

    std::vector<PmiRecord> All() const {
        std::vector<PmiRecord> records;
        for (const char* ending :
             {"DIMENSIONAL_SIZE", "ANGULAR_SIZE", "DIMENSIONAL_SIZE_WITH_PATH",
              "DIMENSIONAL_SIZE_WITH_DATUM_FEATURE", "DIMENSIONAL_LOCATION", "ANGULAR_LOCATION",
              "DIMENSIONAL_LOCATION_WITH_PATH", "DIMENSIONAL_LOCATION_WITH_DATUM_FEATURE"}) {
            for (const EntityNumber number : _file.OfTypeEnding(ending)) {
                records.push_back(Record(_file.Get(number)));
            }
        }
        const auto byNumber = [](const PmiRecord& a, const PmiRecord& b) {
            return a.number < b.number;
        };
        std::sort(records.begin(), records.end(), byNumber);
        const auto same = [](const PmiRecord& a, const PmiRecord& b) {
            return a.number == b.number;
        };
        records.erase(std::unique(records.begin(), records.end(), same), records.end());
        return records;
    }

private:
    PmiRecord Record(const ExchangeInstance& instance) const {
        PmiRecord record;
        record.number = instance.number;
        record.kind = AnnotationKind::Dimension;
        const bool location = std::any_of(
            instance.parts.begin(), instance.parts.end(),
            [](const auto& part) { return part.type.find("LOCATION") != std::string::npos; });
        location ? ReadLocation(instance, record) : ReadSize(instance, record);
        const Values values = ReadValues(instance.number);
        const Deviations deviations = ReadDeviations(instance.number);
        record.attributes["MainType"] = "Dimension";
        record.attributes["SubType"] = record.type;
        FillValues(values, deviations, record);
        record.text = Text(record, values, deviations);
        return record;
    }

    static void ReadLocation(const ExchangeInstance& instance, PmiRecord& record) {
        const char* part = "SHAPE_ASPECT_RELATIONSHIP";
        const bool angular = instance.HasTypeEnding("ANGULAR_LOCATION");
        const std::string& name = instance.Attribute(part, 0, 0).text;
        record.type = !name.empty() ? name : angular ? "angle" : "linear distance";
        record.typeCode = codeOf(locationCodes, record.type);
        if (angular) {
            record.typeCode = angularLocation;
        } else if (instance.HasTypeEnding("_WITH_PATH")) {
            record.typeCode = locationWithPath;
        } else if (instance.Is("DIRECTED_DIMENSIONAL_LOCATION") && record.typeCode == 0) {
            record.typeCode = orientedLocation;
        }
        record.label = instance.Attribute(part, 1, 1).text;
        for (const std::size_t end : {2U, 3U}) {
            if (const EntityNumber target = instance.Attribute(part, end, end).reference) {
                record.targets.push_back(target);
            }
        }
    }

    static void ReadSize(const ExchangeInstance& instance, PmiRecord& record) {
        const bool angular = instance.HasTypeEnding("ANGULAR_SIZE");
        const std::string& name = instance.Attribute("DIMENSIONAL_SIZE", 1, 1).text;
        record.type = !name.empty() ? name : angular ? "angle" : "size";
        record.typeCode = codeOf(sizeCodes, record.type);
        if (angular) {
            record.typeCode = angularSize;
        } else if (instance.HasTypeEnding("_WITH_PATH")) {
            record.typeCode = sizeWithPath;
        }
        if (const auto target = instance.Attribute("DIMENSIONAL_SIZE", 0, 0).reference) {
            record.targets.push_back(target);
        }
    }

    Values ReadValues(EntityNumber dimension) const {
        Values values;
        const auto found = _representations.find(dimension);
        if (found == _representations.end()) {
            return values;
        }
        std::set<EntityNumber> seen;
        for (const EntityNumber number : found->second) {
            const ExchangeInstance representation = _file.Get(number);
            for (const EntityNumber item :
                 representation.Attribute("REPRESENTATION", 1, 1).References()) {
                ReadItem(_file.Get(item), values, seen);
            }
        }
        return values;
    }

    /// Compound items may hold each other; each of them is read once.
    void ReadItem(const ExchangeInstance& item, Values& values,
                  std::set<EntityNumber>& seen) const {
        if (item.Is("DESCRIPTIVE_REPRESENTATION_ITEM")) {
            ReadDescription(item.Attribute("DESCRIPTIVE_REPRESENTATION_ITEM", 0, 1).text, values);
        } else if (item.Is("COMPOUND_REPRESENTATION_ITEM") && seen.size() < mostItems &&
                   seen.insert(item.number).second) {
            for (const EntityNumber child :
                 item.Attribute("COMPOUND_REPRESENTATION_ITEM", 0, 1).References()) {
                ReadItem(_file.Get(child), values, seen);
            }
        } else if (const auto measure = readMeasure(_file, item.number)) {
            const std::string& name = item.Name();
            auto& value = name == "upper limit"   ? values.upper
                          : name == "lower limit" ? values.lower
                                                  : values.nominal;
            if (!value) {
                value = measure;
            }
            ReadQualifiers(item, values);
        }
    }

    static void ReadDescription(const std::string& text, Values& values) {
        if (text == "theoretical" || text == "basic") {
            values.basic = true;
        } else if (text == "auxiliary" || text == "reference") {
            values.reference = true;
        } else if (!text.empty()) {
            values.note += (values.note.empty() ? "" : ", ") + text;
        }
    }

    void ReadQualifiers(const ExchangeInstance& item, Values& values) const {
        const auto* part = item.Find("QUALIFIED_REPRESENTATION_ITEM");
        if (part == nullptr) {
            return;
        }
        for (const EntityNumber number : part->parameters.References()) {
            const ExchangeInstance qualifier = _file.Get(number);
            const std::string& text = qualifier.Attribute("TYPE_QUALIFIER", 0, 0).text;
            if (qualifier.Is("VALUE_FORMAT_TYPE_QUALIFIER")) {
                values.decimals = decimalsOf(text);
            } else if (qualifier.Is("TYPE_QUALIFIER")) {
                values.qualifier = text;
            }
        }
    }

    Deviations ReadDeviations(EntityNumber dimension) const {
        Deviations deviations;
        const auto found = _ranges.find(dimension);
        if (found == _ranges.end()) {
            return deviations;
        }
        const ExchangeInstance range = _file.Get(found->second);
        if (range.Is("TOLERANCE_VALUE")) {
            deviations.lower =
                readMeasure(_file, range.Attribute("TOLERANCE_VALUE", 0, 0).reference);
            deviations.upper =
                readMeasure(_file, range.Attribute("TOLERANCE_VALUE", 1, 1).reference);
        } else if (range.Is("LIMITS_AND_FITS")) {
            deviations.fit = range.Attribute("LIMITS_AND_FITS", 0, 0).text +
                             range.Attribute("LIMITS_AND_FITS", 2, 2).text;
        }
        return deviations;
    }

    static void FillValues(const Values& values, const Deviations& deviations, PmiRecord& record) {
        auto& attributes = record.attributes;
        const auto set = [&](const char* key, const auto& limit, const auto& deviation) {
            if (limit) {
                attributes[key] = formatNumber(limit->Scaled());
            } else if (deviation && values.nominal) {
                attributes[key] = formatNumber(values.nominal->Scaled() + deviation->Scaled());
            }
        };
        if (values.nominal) {
            attributes["Value"] = formatNumber(values.nominal->Scaled());
        }
        set("LowerVal", values.lower, deviations.lower);
        set("UpperVal", values.upper, deviations.upper);
        if (values.decimals) {
            attributes["Precision"] = std::to_string(*values.decimals);
        }
        if (deviations.lower || deviations.upper) {
            attributes["Tolerance Type"] = "plus-minus";
        } else if (!deviations.fit.empty()) {
            attributes["Tolerance Type"] = "limits and fits";
        } else if (values.lower || values.upper) {
            attributes["Tolerance Type"] = "limits";
        } else if (values.basic) {
            attributes["Tolerance Type"] = "basic";
        } else if (values.reference) {
            attributes["Tolerance Type"] = "reference";
        }
        const std::string note = values.note.empty() ? deviations.fit : values.note;
        if (!note.empty()) {
            attributes["TolNote"] = note;
        }
        if (!values.qualifier.empty()) {
            attributes["Value Type"] = values.qualifier;
        }
    }

    static std::string Prefix(const std::string& type) {
        const auto has = [&](const char* word) { return type.find(word) != std::string::npos; };
        const std::string sphere = has("spherical") ? "S" : "";
        return has("diameter") ? sphere + "⌀ " : has("radius") ? sphere + "R " : "";
    }

    static std::string Text(const PmiRecord& record, const Values& values,
                            const Deviations& deviations) {
        const auto& main = values.nominal ? values.nominal
                           : values.upper ? values.upper
                                          : values.lower;
        if (!main) {
            return record.type;
        }
        std::string text;
        if (values.upper && values.lower) {
            text = formatMeasure(*values.lower, values.decimals) + " – " +
                   formatMeasure(*values.upper, values.decimals);
        } else {
            text = formatMeasure(*main, values.decimals);
        }
        text += DeviationText(values, deviations);
        if (!deviations.fit.empty()) {
            text += " " + deviations.fit;
        }
        const std::string unit = unitSuffix(main->unit);
        text = Prefix(record.type) + text + (unit.empty() ? "" : " " + unit);
        text += QualifierText(values.qualifier);
        return values.basic ? "[" + text + "]" : values.reference ? "(" + text + ")" : text;
    }

    static std::string QualifierText(const std::string& qualifier) {
        return qualifier == "maximum"   ? " MAX"
               : qualifier == "minimum" ? " MIN"
               : qualifier == "average" ? " AVG"
                                        : "";
    }

    static std::string DeviationText(const Values& values, const Deviations& deviations) {
        if (!deviations.lower || !deviations.upper) {
            return {};
        }
        const ExchangeMeasure& lower = *deviations.lower;
        const ExchangeMeasure& upper = *deviations.upper;
        // Tolerances may need a digit more than the value is written with.
        const auto text = [&](const ExchangeMeasure& measure) {
            const std::string exact = formatMeasure(measure, std::nullopt);
            const std::string padded = formatMeasure(measure, values.decimals);
            return padded.size() > exact.size() ? padded : exact;
        };
        if (std::abs(lower.Scaled() + upper.Scaled()) < 1e-9 * std::abs(upper.Scaled())) {
            return " ±" + text(upper);
        }
        const auto withSign = [&](const ExchangeMeasure& measure) {
            return (measure.value > 0 ? " +" : " ") + text(measure);
        };
        return withSign(upper) + withSign(lower);
    }

    const ExchangeFile& _file;
    std::unordered_map<EntityNumber, std::vector<EntityNumber>> _representations;
    std::unordered_map<EntityNumber, EntityNumber> _ranges;
};

}  // namespace

std::vector<PmiRecord> readDimensions(const ExchangeFile& file) {
    return Dimensions(file).All();
}

}  // namespace kesview
