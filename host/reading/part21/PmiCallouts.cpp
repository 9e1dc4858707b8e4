/// @file
/// See PmiCallouts.h.

#include "reading/part21/PmiCallouts.h"

#include "reading/part21/ExchangeUnits.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace kesview {
namespace {

constexpr std::size_t mostCallouts = 1000;  // within one

constexpr const char* representationLink = "PMI representation to presentation link";

bool isCallout(const ExchangeInstance& instance) {
    return std::any_of(instance.parts.begin(), instance.parts.end(), [](const auto& part) {
        const std::string& type = part.type;
        return type == "DRAUGHTING_CALLOUT" || type == "DRAUGHTING_ELEMENTS" ||
               (type.size() > 8 && type.rfind("_CALLOUT") == type.size() - 8);
    });
}

class Callouts {
public:
    Callouts(const ExchangeFile& file, double millimetresPerUnit)
        : _file(file), _units(readDefaultUnits(file)), _fallback(millimetresPerUnit) {
        FindPlanes();
        FindModels();
        FindHidden();
        FindDefinitions();
    }

    std::vector<PmiCallout> All() {
        std::vector<PmiCallout> callouts;
        std::set<EntityNumber> inCallouts;
        std::vector<EntityNumber> numbers = _file.OfTypeEnding("_CALLOUT");
        const auto& elements = _file.OfType("DRAUGHTING_ELEMENTS");
        numbers.insert(numbers.end(), elements.begin(), elements.end());
        for (const EntityNumber number : numbers) {
            PmiCallout callout = Callout(_file.Get(number));
            inCallouts.insert(callout.occurrences.begin(), callout.occurrences.end());
            callouts.push_back(std::move(callout));
        }
        for (const EntityNumber number : Occurrences()) {
            if (inCallouts.count(number) == 0) {
                callouts.push_back(Lone(_file.Get(number)));
            }
        }
        return callouts;
    }

private:
    std::vector<EntityNumber> Occurrences() const {
        std::vector<EntityNumber> numbers;
        for (const char* ending :
             {"ANNOTATION_OCCURRENCE", "_CURVE_OCCURRENCE", "_FILL_AREA_OCCURRENCE",
              "_TEXT_OCCURRENCE", "_SYMBOL_OCCURRENCE", "ANNOTATION_PLACEHOLDER_OCCURRENCE",
              "_WITH_LEADER_LINE"}) {
            for (const EntityNumber number : _file.OfTypeEnding(ending)) {
                if (isOccurrence(_file.Get(number))) {
                    numbers.push_back(number);
                }
            }
        }
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        return numbers;
    }

    void FindPlanes() {
        for (const EntityNumber number : _file.OfType("ANNOTATION_PLANE")) {
            const ExchangeInstance plane = _file.Get(number);
            for (const EntityNumber element :
                 plane.Attribute("ANNOTATION_PLANE", 0, 3).References()) {
                _planes.emplace(element, plane.Attribute("STYLED_ITEM", 1, 2).reference);
            }
        }
    }

    void FindModels() {
        for (const EntityNumber number : _file.OfType("DRAUGHTING_MODEL")) {
            const ExchangeInstance model = _file.Get(number);
            const EntityNumber context = model.Attribute("REPRESENTATION", 2, 2).reference;
            for (const EntityNumber item : model.Attribute("REPRESENTATION", 1, 1).References()) {
                _contexts.emplace(item, context);
                const ExchangeInstance plane = _file.Get(item);
                if (plane.Is("ANNOTATION_PLANE")) {
                    for (const EntityNumber element :
                         plane.Attribute("ANNOTATION_PLANE", 0, 3).References()) {
                        _contexts.emplace(element, context);
                    }
                }
            }
        }
    }

    void FindHidden() {
        for (const EntityNumber number : _file.OfType("INVISIBILITY")) {
            for (const EntityNumber item : _file.Get(number).References()) {
                _hidden.insert(item);
                const ExchangeInstance layer = _file.Get(item);
                if (layer.HasTypeEnding("PRESENTATION_LAYER_ASSIGNMENT")) {
                    const auto items = layer.References();
                    _hidden.insert(items.begin(), items.end());
                }
            }
        }
    }

    void FindDefinitions() {
        const char* part = "ITEM_IDENTIFIED_REPRESENTATION_USAGE";
        std::vector<EntityNumber> links = _file.OfType("DRAUGHTING_MODEL_ITEM_ASSOCIATION");
        const auto& more = _file.OfType("DRAUGHTING_MODEL_ITEM_ASSOCIATION_WITH_PLACEHOLDER");
        links.insert(links.end(), more.begin(), more.end());
        // The link that a file marks as the meaning goes first.
        std::stable_partition(links.begin(), links.end(), [&](EntityNumber number) {
            return _file.Get(number).Attribute(part, 0, 0).text == representationLink;
        });
        for (const EntityNumber number : links) {
            const ExchangeInstance link = _file.Get(number);
            for (const EntityNumber item : link.Attribute(part, 4, 4).References()) {
                auto& definitions = _definitions[item];
                const EntityNumber definition = link.Attribute(part, 2, 2).reference;
                if (std::find(definitions.begin(), definitions.end(), definition) ==
                    definitions.end()) {
                    definitions.push_back(definition);
                }
            }
        }
    }

    PmiCallout Callout(const ExchangeInstance& instance) {
        PmiCallout callout;
        callout.number = instance.number;
        callout.name = instance.Name();
        std::set<EntityNumber> seen;
        CollectOccurrences(instance, callout, seen);
        Finish(callout);
        return callout;
    }

    PmiCallout Lone(const ExchangeInstance& occurrence) {
        PmiCallout callout;
        callout.number = occurrence.number;
        callout.name = occurrence.Name();
        callout.occurrences = {occurrence.number};
        Finish(callout);
        return callout;
    }

    /// Callouts may hold callouts; each of them counts once, whoever holds it.
    void CollectOccurrences(const ExchangeInstance& instance, PmiCallout& callout,
                            std::set<EntityNumber>& seen) {
        seen.insert(instance.number);
        for (const EntityNumber content :
             instance.Attribute("DRAUGHTING_CALLOUT", 0, 1).References()) {
            const ExchangeInstance child = _file.Get(content);
            if (isOccurrence(child)) {
                callout.occurrences.push_back(content);
            } else if (isCallout(child) && seen.size() < mostCallouts && seen.count(content) == 0) {
                CollectOccurrences(child, callout, seen);
            }
        }
    }

    void Finish(PmiCallout& callout) {
        const double scale = ScaleOf(callout);
        const ExchangeGeometry geometry(_file, scale, _units.angle.value_or(1));
        callout.hidden = _hidden.count(callout.number) != 0;
        bool allHidden = !callout.occurrences.empty();
        std::vector<EntityNumber> placeholders;
        for (const EntityNumber number : callout.occurrences) {
            const ExchangeInstance occurrence = _file.Get(number);
            allHidden = allHidden && _hidden.count(number) != 0;
            callout.names.push_back(occurrence.Name());
            callout.names.push_back(
                _file.Get(occurrence.Attribute("STYLED_ITEM", 1, 2).reference).Name());
            const bool placeholder = occurrence.HasTypeEnding("PLACEHOLDER_OCCURRENCE") ||
                                     occurrence.HasTypeEnding("_WITH_LEADER_LINE");
            placeholder ? placeholders.push_back(number)
                        : drawOccurrence(geometry, _file, number, callout.drawing);
        }
        // A placeholder says where the drawing would stand; it counts where there is none.
        for (const EntityNumber number : placeholders) {
            if (callout.drawing.IsEmpty()) {
                drawOccurrence(geometry, _file, number, callout.drawing);
            }
        }
        callout.names.push_back(callout.name);
        callout.hidden = callout.hidden || allHidden;
        AddDefinitions(callout);
        callout.plane = PlaneOf(callout, geometry, placeholders);
    }

    double ScaleOf(const PmiCallout& callout) const {
        std::vector<EntityNumber> candidates = callout.occurrences;
        candidates.insert(candidates.begin(), callout.number);
        for (const EntityNumber candidate : candidates) {
            const auto context = _contexts.find(candidate);
            if (context == _contexts.end()) {
                continue;
            }
            if (const auto length = readContextUnits(_file, context->second).length) {
                return *length;
            }
        }
        return _units.length.value_or(_fallback);
    }

    void AddDefinitions(PmiCallout& callout) const {
        std::vector<EntityNumber> items = callout.occurrences;
        items.insert(items.begin(), callout.number);
        for (const EntityNumber item : items) {
            const auto found = _definitions.find(item);
            if (found != _definitions.end()) {
                callout.definitions.insert(callout.definitions.end(), found->second.begin(),
                                           found->second.end());
            }
        }
    }

    std::optional<Placement> PlaneOf(const PmiCallout& callout, const ExchangeGeometry& geometry,
                                     const std::vector<EntityNumber>& placeholders) const {
        std::vector<EntityNumber> items = callout.occurrences;
        items.insert(items.begin(), callout.number);
        for (const EntityNumber item : items) {
            const auto found = _planes.find(item);
            if (found == _planes.end()) {
                continue;
            }
            for (const EntityNumber frame : _file.Get(found->second).References()) {
                if (const auto plane = geometry.Frame(frame)) {
                    return plane;
                }
            }
        }
        for (const EntityNumber number : placeholders) {
            const ExchangeInstance placeholder = _file.Get(number);
            const auto set = _file.Get(placeholder.Attribute("STYLED_ITEM", 1, 2).reference);
            for (const EntityNumber frame : set.References()) {
                if (const auto plane = geometry.Frame(frame)) {
                    return plane;
                }
            }
        }
        return std::nullopt;
    }

    const ExchangeFile& _file;
    ContextUnits _units;
    double _fallback;
    std::unordered_map<EntityNumber, EntityNumber> _planes;
    std::unordered_map<EntityNumber, EntityNumber> _contexts;
    std::unordered_map<EntityNumber, std::vector<EntityNumber>> _definitions;
    std::set<EntityNumber> _hidden;
};

}  // namespace

std::vector<PmiCallout> readCallouts(const ExchangeFile& file, double millimetresPerUnit) {
    return Callouts(file, millimetresPerUnit).All();
}

}  // namespace kesview
