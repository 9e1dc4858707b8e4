#include <KesVizCore/graph/Attribute.h>

namespace KesVizCore {

Attribute::Attribute(AttributeType type) : _type(type) {}

AttributeType Attribute::GetType() {
    return _type;
}

Attribute::~Attribute() = default;

}  // namespace KesVizCore
