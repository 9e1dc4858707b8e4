/// @file
/// See DatumRecords.h.

#include "reading/part21/DatumRecords.h"

#include "reading/part21/PmiText.h"

#include <algorithm>

namespace kesview {
namespace {

constexpr int deepestReference = 6;

/// Walks compartments, elements and references down to datums.
class ReferenceReader {
public:
    explicit ReferenceReader(const ExchangeFile& file) : _file(file) {}

    DatumReferences Read(const std::vector<EntityNumber>& systems) {
        for (const EntityNumber system : systems) {
            const ExchangeInstance instance = _file.Get(system);
            if (!instance.Is("DATUM_SYSTEM")) {
                Cell(instance);
                continue;
            }
            for (const EntityNumber compartment :
                 instance.Attribute("DATUM_SYSTEM", 0, 4).References()) {
                Cell(_file.Get(compartment));
            }
        }
        return _result;
    }

private:
    void Cell(const ExchangeInstance& instance) {
        const std::string text = Text(instance, 0);
        if (!text.empty()) {
            _result.text += (_result.text.empty() ? "| " : " | ") + text;
        }
    }

    std::string Text(const ExchangeInstance& instance, int depth) {
        if (instance.Is("DATUM")) {
            _result.datums.push_back(instance.number);
            return datumLetter(instance);
        }
        if (depth > deepestReference) {
            return {};
        }
        if (instance.Is("DATUM_REFERENCE_COMPARTMENT") || instance.Is("DATUM_REFERENCE_ELEMENT")) {
            const char* part = "GENERAL_DATUM_REFERENCE";
            return Joined(instance.Attribute(part, 0, 4).References(), depth) +
                   Modifiers(instance.Attribute(part, 1, 5));
        }
        if (instance.HasTypeEnding("DATUM_REFERENCE")) {
            return Joined({instance.Attribute("DATUM_REFERENCE", 1, 1).reference}, depth) +
                   Modifiers(instance.Attribute("REFERENCED_MODIFIED_DATUM", 0, 2));
        }
        return {};
    }

    std::string Joined(const std::vector<EntityNumber>& bases, int depth) {
        std::string text;
        for (const EntityNumber base : bases) {
            const std::string one = Text(_file.Get(base), depth + 1);
            text += (text.empty() || one.empty() ? "" : "-") + one;
        }
        return text;
    }

    std::string Modifiers(const ExchangeValue& value) const {
        std::string text;
        if (value.kind == ExchangeValue::Kind::Enumeration) {
            text += " " + modifierSymbol(value.text);
        } else if (value.kind == ExchangeValue::Kind::Reference) {
            const ExchangeInstance withValue = _file.Get(value.reference);
            text +=
                " " + modifierSymbol(
                          withValue.Attribute("DATUM_REFERENCE_MODIFIER_WITH_VALUE", 0, 0).text);
        }
        for (const ExchangeValue& item : value.items) {
            text += Modifiers(item);
        }
        return text;
    }

    const ExchangeFile& _file;
    DatumReferences _result;
};

PmiRecord datumRecord(const AspectLinks& aspects, const ExchangeInstance& datum) {
    PmiRecord record;
    record.number = datum.number;
    record.kind = AnnotationKind::Datum;
    record.type = "datum";
    record.label = datumLetter(datum);
    record.text = record.label;
    record.attributes = {{"MainType", "Datum"}, {"SubType", record.type}, {"Value", record.label}};
    record.targets = {datum.number};
    record.drawnWith = aspects.FeaturesOf(datum.number);
    return record;
}

PmiRecord targetRecord(const ExchangeFile& file, const AspectLinks& aspects,
                       const ExchangeInstance& target) {
    PmiRecord record;
    record.number = target.number;
    record.kind = AnnotationKind::DatumTarget;
    const std::string& shape = target.Attribute("SHAPE_ASPECT", 1, 1).text;
    record.type = shape.empty() ? "datum target" : "datum target " + shape;
    record.label = target.Attribute("DATUM_TARGET", 0, 4).text;
    for (const EntityNumber related : aspects.PartsOf(target.number)) {
        const ExchangeInstance datum = file.Get(related);
        if (datum.Is("DATUM")) {
            record.datums.push_back(related);
            record.label = datumLetter(datum) + record.label;
        }
    }
    record.text = record.label;
    record.attributes = {
        {"MainType", "DatumTarget"}, {"SubType", record.type}, {"Value", record.label}};
    record.targets = {target.number};
    return record;
}

}  // namespace

std::string datumLetter(const ExchangeInstance& datum) {
    return datum.Attribute("DATUM", 0, 4).text;
}

DatumReferences readDatumReferences(const ExchangeFile& file,
                                    const std::vector<EntityNumber>& systems) {
    return ReferenceReader(file).Read(systems);
}

std::vector<PmiRecord> readDatums(const ExchangeFile& file, const AspectLinks& aspects) {
    std::vector<PmiRecord> records;
    for (const EntityNumber number : file.OfType("DATUM")) {
        records.push_back(datumRecord(aspects, file.Get(number)));
    }
    std::vector<EntityNumber> targets;
    for (const char* type : {"DATUM_TARGET", "PLACED_DATUM_TARGET_FEATURE"}) {
        const auto& some = file.OfType(type);
        targets.insert(targets.end(), some.begin(), some.end());
    }
    std::sort(targets.begin(), targets.end());
    targets.erase(std::unique(targets.begin(), targets.end()), targets.end());
    for (const EntityNumber number : targets) {
        records.push_back(targetRecord(file, aspects, file.Get(number)));
    }
    return records;
}

}  // namespace kesview
