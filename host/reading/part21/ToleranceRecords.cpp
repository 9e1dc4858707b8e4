/// @file
/// See ToleranceRecords.h.

#include "reading/part21/ToleranceRecords.h"

#include "reading/part21/DatumRecords.h"
#include "reading/part21/PmiText.h"

#include <set>
#include <unordered_map>

namespace kesview {
namespace {

struct ToleranceType {
    const char* entity;
    const char* name;
    const char* symbol;
    std::int32_t code;  ///< by which the reader's document counts tolerance types
};

constexpr ToleranceType toleranceTypes[] = {
    {"ANGULARITY_TOLERANCE", "angularity", "∠", 1},
    {"CIRCULAR_RUNOUT_TOLERANCE", "circular runout", "↗", 2},
    {"ROUNDNESS_TOLERANCE", "circularity", "○", 3},
    {"COAXIALITY_TOLERANCE", "coaxiality", "◎", 4},
    {"CONCENTRICITY_TOLERANCE", "concentricity", "◎", 5},
    {"CYLINDRICITY_TOLERANCE", "cylindricity", "⌭", 6},
    {"FLATNESS_TOLERANCE", "flatness", "⏥", 7},
    {"PARALLELISM_TOLERANCE", "parallelism", "∥", 8},
    {"PERPENDICULARITY_TOLERANCE", "perpendicularity", "⟂", 9},
    {"POSITION_TOLERANCE", "position", "⌖", 10},
    {"LINE_PROFILE_TOLERANCE", "profile of line", "⌒", 11},
    {"SURFACE_PROFILE_TOLERANCE", "profile of surface", "⌓", 12},
    {"STRAIGHTNESS_TOLERANCE", "straightness", "⏤", 13},
    {"SYMMETRY_TOLERANCE", "symmetry", "⌯", 14},
    {"TOTAL_RUNOUT_TOLERANCE", "total runout", "⌰", 15},
};

struct Zone {
    std::string form;
    std::optional<ExchangeMeasure> projection;
};

class Tolerances {
public:
    explicit Tolerances(const ExchangeFile& file) : _file(file) {
        for (const EntityNumber number : file.OfType("TOLERANCE_ZONE")) {
            const ExchangeInstance zone = file.Get(number);
            const auto form = zone.Attribute("TOLERANCE_ZONE", 1, 5).reference;
            for (const EntityNumber target : zone.Attribute("TOLERANCE_ZONE", 0, 4).References()) {
                _zones[target].form = file.Get(form).Attribute("TOLERANCE_ZONE_FORM", 0, 0).text;
                _zoneTargets[number].push_back(target);
            }
        }
        for (const EntityNumber number : file.OfType("PROJECTED_ZONE_DEFINITION")) {
            const ExchangeInstance definition = file.Get(number);
            const auto zone = definition.Attribute("TOLERANCE_ZONE_DEFINITION", 0, 0).reference;
            const auto length = definition.Attribute("PROJECTED_ZONE_DEFINITION", 1, 3).reference;
            for (const EntityNumber target : _zoneTargets[zone]) {
                _zones[target].projection = readMeasure(file, length);
            }
        }
        for (const EntityNumber number : file.OfType("GEOMETRIC_TOLERANCE_RELATIONSHIP")) {
            const ExchangeInstance relation = file.Get(number);
            const char* part = "GEOMETRIC_TOLERANCE_RELATIONSHIP";
            if (relation.Attribute(part, 0, 0).text.find("composite") != std::string::npos) {
                const EntityNumber upper = relation.Attribute(part, 2, 2).reference;
                const EntityNumber lower = relation.Attribute(part, 3, 3).reference;
                _composite.insert(upper);
                _composite.insert(lower);
                _upperOf[lower].push_back(upper);
            }
        }
    }

    std::vector<PmiRecord> All() const {
        std::vector<PmiRecord> records;
        for (const EntityNumber number : _file.OfTypeEnding("_TOLERANCE")) {
            const ExchangeInstance instance = _file.Get(number);
            const bool measured = instance.Attribute("GEOMETRIC_TOLERANCE", 2, 2).reference != 0 &&
                                  instance.Attribute("GEOMETRIC_TOLERANCE", 3, 3).reference != 0;
            if (measured && !instance.Is("PLUS_MINUS_TOLERANCE")) {
                records.push_back(Record(instance));
            }
        }
        return records;
    }

private:
    PmiRecord Record(const ExchangeInstance& instance) const {
        PmiRecord record;
        record.number = instance.number;
        record.kind = AnnotationKind::Tolerance;
        record.type = "geometric tolerance";
        for (const ToleranceType& type : toleranceTypes) {
            if (instance.Is(type.entity)) {
                record.type = type.name;
                record.typeCode = type.code;
                record.text = type.symbol;
            }
        }
        record.label = instance.Attribute("GEOMETRIC_TOLERANCE", 0, 0).text;
        record.targets = {instance.Attribute("GEOMETRIC_TOLERANCE", 3, 3).reference};
        record.attributes = {{"MainType", "Tolerance"}, {"SubType", record.type}};
        ReadValue(instance, record);
        ReadModifiers(instance, record);
        ReadZone(instance.number, record);
        ReadDatums(instance, record);
        if (_composite.count(instance.number) != 0) {
            record.attributes["IsComposite"] = "true";
            const auto upper = _upperOf.find(instance.number);
            if (upper != _upperOf.end()) {
                record.drawnWith = upper->second;
            }
        }
        if (IsAllAround(record.targets.front())) {
            record.attributes["AllAround"] = "true";
        }
        return record;
    }

    void ReadValue(const ExchangeInstance& instance, PmiRecord& record) const {
        const auto zone = _zones.find(instance.number);
        const std::string form = zone == _zones.end() ? "" : zone->second.form;
        const bool sphere = form.find("spherical") != std::string::npos;
        const bool round = sphere || form.find("cylindrical") != std::string::npos;
        record.attributes["Value Type"] = sphere  ? "spherical diameter"
                                          : round ? "diameter"
                                                  : "width";
        record.attributes["Tolerance Type"] = record.type;
        const auto magnitude =
            readMeasure(_file, instance.Attribute("GEOMETRIC_TOLERANCE", 2, 2).reference);
        if (!magnitude) {
            return;
        }
        record.attributes["Tolerance Value"] = formatNumber(magnitude->Scaled());
        const std::string unit = unitSuffix(magnitude->unit);
        record.text += (record.text.empty() ? "" : " ");
        record.text += sphere ? "S⌀" : round ? "⌀" : "";
        record.text += formatMeasure(*magnitude, std::nullopt);
        record.text += PerUnit(instance, record);
        record.text += unit.empty() ? "" : " " + unit;
    }

    /// "/25" or "/⌀25" where the tolerance holds for each such piece of the feature.
    std::string PerUnit(const ExchangeInstance& instance, PmiRecord& record) const {
        const auto* defined = instance.Find("GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT");
        if (defined == nullptr || !instance.IsComplex()) {
            return {};
        }
        const auto size = readMeasure(_file, defined->parameters.At(0).reference);
        if (!size) {
            return {};
        }
        record.attributes["RateUnit1"] = formatNumber(size->Scaled());
        const char* part = "GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT";
        const std::string& shape = instance.Attribute(part, 0, 5).text;
        const std::string text = formatMeasure(*size, std::nullopt);
        if (shape == "CIRCULAR") {
            return "/⌀" + text;
        }
        const auto second = readMeasure(_file, instance.Attribute(part, 1, 6).reference);
        if (second) {
            record.attributes["RateUnit2"] = formatNumber(second->Scaled());
            return "/" + text + "×" + formatMeasure(*second, std::nullopt);
        }
        return shape == "SQUARE" ? "/" + text + "×" + text : "/" + text;
    }

    void ReadModifiers(const ExchangeInstance& instance, PmiRecord& record) const {
        std::string text;
        if (instance.Is("GEOMETRIC_TOLERANCE_WITH_MODIFIERS")) {
            const ExchangeValue& list =
                instance.Attribute("GEOMETRIC_TOLERANCE_WITH_MODIFIERS", 0, 4);
            for (const ExchangeValue& item : list.items) {
                text += " " + modifierSymbol(item.text);
            }
        }
        if (instance.Is("MODIFIED_GEOMETRIC_TOLERANCE")) {
            text +=
                " " + modifierSymbol(instance.Attribute("MODIFIED_GEOMETRIC_TOLERANCE", 0, 4).text);
        }
        const auto measureOf = [&](const char* part) {
            return instance.Is(part) ? readMeasure(_file, instance.Attribute(part, 0, 4).reference)
                                     : std::nullopt;
        };
        if (const auto most = measureOf("GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE")) {
            text += " " + formatMeasure(*most, std::nullopt) + " MAX";
            record.attributes["RefineTolerance"] = formatNumber(most->Scaled());
        }
        if (const auto shift = measureOf("UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE")) {
            text += " Ⓤ " + formatMeasure(*shift, std::nullopt);
            record.attributes["ShiftValue"] = formatNumber(shift->Scaled());
        }
        if (!text.empty()) {
            record.attributes["TolNote"] = text.substr(1);
        }
        record.text += text;
    }

    void ReadZone(EntityNumber number, PmiRecord& record) const {
        const auto zone = _zones.find(number);
        if (zone == _zones.end() || !zone->second.projection) {
            return;
        }
        const ExchangeMeasure& length = *zone->second.projection;
        record.attributes["ProjTolZoneLength"] = formatNumber(length.Scaled());
        record.text += " Ⓟ " + formatMeasure(length, std::nullopt);
    }

    void ReadDatums(const ExchangeInstance& instance, PmiRecord& record) const {
        const ExchangeValue& systems =
            instance.Attribute("GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE", 0, 4);
        const DatumReferences references = readDatumReferences(_file, systems.References());
        record.datums = references.datums;
        record.text += references.text.empty() ? "" : " " + references.text;
    }

    bool IsAllAround(EntityNumber target) const {
        return _file.Get(target).HasTypeEnding("ALL_AROUND_SHAPE_ASPECT");
    }

    const ExchangeFile& _file;
    std::unordered_map<EntityNumber, Zone> _zones;
    std::unordered_map<EntityNumber, std::vector<EntityNumber>> _zoneTargets;
    std::set<EntityNumber> _composite;
    std::unordered_map<EntityNumber, std::vector<EntityNumber>> _upperOf;  ///< composite segments
};

}  // namespace

std::vector<PmiRecord> readTolerances(const ExchangeFile& file) {
    return Tolerances(file).All();
}

}  // namespace kesview
