#include <KesVizCore/graph/AttributeLineStyle.h>

namespace KesVizCore {

AttributeLineStyle::AttributeLineStyle(const float& weight, const std::string& pattern)
    : Attribute(AttributeType::LineStyle), _weight(weight), _pattern(pattern) {}

AttributeLineStyle::AttributeLineStyle(const AttributeLineStyle& other) = default;
AttributeLineStyle& AttributeLineStyle::operator=(const AttributeLineStyle& other) = default;
AttributeLineStyle::~AttributeLineStyle() = default;

const float& AttributeLineStyle::GetWeight() {
    return _weight;
}

void AttributeLineStyle::SetWeight(const float& weight) {
    _weight = weight;
}

const std::string& AttributeLineStyle::GetPattern() {
    return _pattern;
}

void AttributeLineStyle::SetPattern(const std::string& pattern) {
    _pattern = pattern;
}

}  // namespace KesVizCore
