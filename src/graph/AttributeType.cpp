#include <KesVizCore/graph/AttributeType.h>

namespace KesVizCore {

// Constants that are defined in their class are exported where a source repeats them.
// NOLINTBEGIN(readability-redundant-declaration)
constexpr int AttributeType::Invalid;
constexpr int AttributeType::Color;
constexpr int AttributeType::Highlight;
constexpr int AttributeType::Transform;
constexpr int AttributeType::Visibility;
constexpr int AttributeType::LineStyle;
// NOLINTEND(readability-redundant-declaration)

AttributeType::AttributeType() : _value(Invalid) {}

AttributeType::AttributeType(int value) : _value(value) {}

AttributeType::operator int() const {
    return _value;
}

}  // namespace KesVizCore
