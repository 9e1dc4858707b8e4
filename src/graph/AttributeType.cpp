#include <KesVizCore/graph/AttributeType.h>

namespace KesVizCore {

AttributeType::AttributeType() : _value(Invalid) {}

AttributeType::AttributeType(int value) : _value(value) {}

AttributeType::operator int() const {
    return _value;
}

}  // namespace KesVizCore
