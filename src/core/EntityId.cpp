#include <KesVizCore/core/EntityId.h>

namespace KesVizCore {

EntityId::EntityId() : EntityId(0, InvalidType, 0) {}

EntityId::EntityId(std::uint64_t ownerId, EntityType type, std::uint64_t id)
    : ID(id), OwnerID(ownerId), Type(type), Flag(false) {}

EntityType EntityId::GetTypeFromInt(const std::uint64_t& value) {
    switch (value) {
        case VertexType:
        case EdgeType:
        case FaceType:
        case BodyType:
        case CloudType:
        case AnnotationType:
        case WireType:
        case GroupType:
        case MeshType:
        case PointSetType:
        case ViewType:
        case CaptureType:
        case DimensionType:
        case ToleranceType:
        case DatumType:
        case NoteType:
        case SurfaceFinishType:
        case WeldType:
        case AnnotationSetType:
        case ConstructionType:
        case PartType:
        case AssemblyType:
        case OtherType:
            return static_cast<EntityType>(value);
        default:
            return InvalidType;
    }
}

bool EntityId::IsEmpty() const {
    return ID == 0 && OwnerID == 0;
}

void EntityId::Clear() {
    Type = InvalidType;
    ID = 0;
    OwnerID = 0;
}

bool EntityId::IsVertex() const {
    return Type == VertexType;
}
bool EntityId::IsEdge() const {
    return Type == EdgeType;
}
bool EntityId::IsFace() const {
    return Type == FaceType;
}
bool EntityId::IsBody() const {
    return Type == BodyType;
}
bool EntityId::IsCloud() const {
    return Type == CloudType;
}
bool EntityId::IsGroup() const {
    return Type == GroupType;
}
bool EntityId::IsView() const {
    return Type == ViewType;
}
bool EntityId::IsCapture() const {
    return Type == CaptureType;
}
bool EntityId::IsConstruction() const {
    return Type == ConstructionType;
}
bool EntityId::IsPart() const {
    return Type == PartType;
}
bool EntityId::IsOther() const {
    return Type == OtherType;
}

bool EntityId::IsAnnotation() const {
    switch (Type) {
        case AnnotationType:
        case ViewType:
        case CaptureType:
        case DimensionType:
        case ToleranceType:
        case DatumType:
        case NoteType:
        case SurfaceFinishType:
        case WeldType:
        case AnnotationSetType:
            return true;
        default:
            return false;
    }
}

EntityId EntityId::GetParentEntity() const {
    if (IsFace() || IsEdge() || IsVertex()) {
        return EntityId(0, BodyType, OwnerID);
    }
    return EntityId();
}

bool EntityId::operator==(EntityId other) const {
    return Type == other.Type && ID == other.ID && OwnerID == other.OwnerID;
}

bool EntityId::operator!=(EntityId other) const {
    return !(*this == other);
}

bool EntityId::operator<(const EntityId& other) const {
    return ID != other.ID ? ID < other.ID : OwnerID < other.OwnerID;
}

std::string EntityId::ToString() const {
    return "EntityId: EntityType = " + std::to_string(static_cast<std::int32_t>(Type)) +
           " ID = " + std::to_string(ID) + " OwnerID = " + std::to_string(OwnerID);
}

}  // namespace KesVizCore
