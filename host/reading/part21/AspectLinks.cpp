/// @file
/// See AspectLinks.h.

#include "reading/part21/AspectLinks.h"

#include <algorithm>

namespace kesview {
namespace {

bool addOnce(std::vector<EntityNumber>& numbers, EntityNumber number) {
    if (std::find(numbers.begin(), numbers.end(), number) != numbers.end()) {
        return false;
    }
    numbers.push_back(number);
    return true;
}

}  // namespace

AspectLinks::AspectLinks(const ExchangeFile& file) : _file(file) {
    for (const char* type :
         {"GEOMETRIC_ITEM_SPECIFIC_USAGE", "ITEM_IDENTIFIED_REPRESENTATION_USAGE"}) {
        for (const EntityNumber number : file.OfType(type)) {
            const ExchangeInstance usage = file.Get(number);
            const char* part = "ITEM_IDENTIFIED_REPRESENTATION_USAGE";
            const auto items = usage.Attribute(part, 4, 4).References();
            for (const EntityNumber aspect : usage.Attribute(part, 2, 2).References()) {
                _items[aspect].insert(_items[aspect].end(), items.begin(), items.end());
            }
        }
    }
    for (const char* ending : {"SHAPE_ASPECT_RELATIONSHIP", "SHAPE_ASPECT_DERIVING_RELATIONSHIP",
                               "FEATURE_FOR_DATUM_TARGET_RELATIONSHIP"}) {
        for (const EntityNumber number : file.OfTypeEnding(ending)) {
            const ExchangeInstance relation = file.Get(number);
            if (relation.HasTypeEnding("LOCATION")) {
                continue;  // a dimension between two aspects relates them too
            }
            const EntityNumber from =
                relation.Attribute("SHAPE_ASPECT_RELATIONSHIP", 2, 2).reference;
            const EntityNumber to = relation.Attribute("SHAPE_ASPECT_RELATIONSHIP", 3, 3).reference;
            addOnce(_parts[from], to);
            addOnce(_features[to], from);
        }
    }
}

std::vector<EntityNumber> AspectLinks::Find(const Links& links, EntityNumber from) {
    const auto found = links.find(from);
    return found == links.end() ? std::vector<EntityNumber>() : found->second;
}

std::vector<EntityNumber> AspectLinks::FeaturesOf(EntityNumber aspect) const {
    return Find(_features, aspect);
}

std::vector<EntityNumber> AspectLinks::PartsOf(EntityNumber aspect) const {
    return Find(_parts, aspect);
}

// Without recursion, as a file may hold a chain of any length.
void AspectLinks::Collect(EntityNumber aspect, std::set<EntityNumber>& seen,
                          std::vector<EntityNumber>& items) const {
    std::vector<EntityNumber> open = {aspect};
    while (!open.empty()) {
        const EntityNumber next = open.back();
        open.pop_back();
        if (!seen.insert(next).second) {
            continue;
        }
        for (const EntityNumber item : Find(_items, next)) {
            addOnce(items, item);
        }
        const std::vector<EntityNumber> parts = Find(_parts, next);
        open.insert(open.end(), parts.rbegin(), parts.rend());
    }
}

std::vector<EntityNumber> AspectLinks::ItemsOf(EntityNumber aspect) const {
    std::set<EntityNumber> seen;
    std::vector<EntityNumber> items;
    const ExchangeInstance instance = _file.Get(aspect);
    if (instance.Is("PRODUCT_DEFINITION_SHAPE")) {
        if (const EntityNumber product = ProductOf(aspect)) {
            items.push_back(product);
        }
        return items;
    }
    Collect(aspect, seen, items);
    if (instance.Is("DATUM") || instance.HasTypeEnding("DATUM_TARGET") ||
        instance.HasTypeEnding("DATUM_TARGET_FEATURE")) {
        for (const EntityNumber feature : FeaturesOf(aspect)) {
            Collect(feature, seen, items);
        }
    }
    return items;
}

EntityNumber AspectLinks::ProductOf(EntityNumber target) const {
    const ExchangeInstance instance = _file.Get(target);
    if (instance.Is("PRODUCT_DEFINITION_SHAPE")) {
        const EntityNumber product = instance.Attribute("PROPERTY_DEFINITION", 2, 2).reference;
        return _file.Get(product).HasTypeEnding("PRODUCT_DEFINITION") ? product : 0;
    }
    const EntityNumber shape = instance.Attribute("SHAPE_ASPECT", 2, 2).reference;
    return _file.Get(shape).Is("PRODUCT_DEFINITION_SHAPE") ? ProductOf(shape) : 0;
}

}  // namespace kesview
