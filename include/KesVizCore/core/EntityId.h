#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// The kind of a modelling entity.
///
/// The numbers are scattered on purpose and hosts store them; 10011 is not a type although it
/// lies between two that are.
enum EntityType : std::int32_t {
    InvalidType = -1,  ///< no entity, or a number that is no type
    VertexType = 10000,
    EdgeType = 10001,
    FaceType = 10002,
    BodyType = 10003,
    CloudType = 10004,       ///< a cloud of points
    AnnotationType = 10005,  ///< an annotation of which no more is told
    WireType = 10006,        ///< edges that bound no face
    GroupType = 10007,
    MeshType = 10008,
    PointSetType = 10009,
    ViewType = 10010,     ///< a view of annotations
    CaptureType = 10012,  ///< a saved camera and the annotations that it shows
    DimensionType = 10100,
    ToleranceType = 10101,
    DatumType = 10102,
    NoteType = 10103,
    SurfaceFinishType = 10104,
    WeldType = 10105,
    AnnotationSetType = 11000,  ///< several annotations taken as one
    ConstructionType = 20000,   ///< construction geometry
    PartType = 40000,
    AssemblyType = 50000,
    OtherType = 99999
};

/// The name of one modelling entity of the host: a typed number and the number of its owner.
///
/// It names things of the host's model; what the scene graph holds is named by a RenderId.
///
/// @par Units and ranges
/// Both numbers are any unsigned 64-bit value. ID 0 together with OwnerID 0 means "no entity".
///
/// @par Errors
/// No operation fails; ToString alone throws std::bad_alloc when memory runs out.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
class KESVIZCORE_API EntityId {
public:
    /// The empty id: both numbers 0, InvalidType, the flag false.
    EntityId();
    /// Note the order: the owner's number first, the entity's own number last.
    EntityId(std::uint64_t ownerId, EntityType type, std::uint64_t id);

    /// The type of the same number, or InvalidType for a number that is no type.
    static EntityType GetTypeFromInt(const std::uint64_t& value);

    /// True when both numbers are 0. The type is not looked at.
    bool IsEmpty() const;
    /// Sets both numbers to 0 and the type to InvalidType; the flag stays.
    void Clear();

    bool IsVertex() const;  ///< Type is VertexType
    bool IsEdge() const;    ///< Type is EdgeType
    bool IsFace() const;    ///< Type is FaceType
    bool IsBody() const;    ///< Type is BodyType
    bool IsCloud() const;   ///< Type is CloudType
    bool IsGroup() const;   ///< Type is GroupType
    /// True for every kind of annotation, views and captures included.
    bool IsAnnotation() const;
    bool IsView() const;          ///< Type is ViewType
    bool IsCapture() const;       ///< Type is CaptureType
    bool IsConstruction() const;  ///< Type is ConstructionType
    bool IsPart() const;          ///< Type is PartType
    bool IsOther() const;         ///< Type is OtherType

    /// The body that owns a face, an edge or a vertex; the empty id for every other type.
    EntityId GetParentEntity() const;

    /// Type and both numbers equal; the flag takes no part.
    bool operator==(EntityId other) const;
    bool operator!=(EntityId other) const;  ///< the opposite of ==
    /// Orders by ID, then by OwnerID. The type takes no part, so that ids which differ in type
    /// alone share one key of an ordered map although operator== tells them apart.
    bool operator<(const EntityId& other) const;

    /// "EntityId: EntityType = 10002 ID = 9 OwnerID = 5" for face 9 of body 5.
    std::string ToString() const;

    std::uint64_t ID;       ///< the entity's own number
    std::uint64_t OwnerID;  ///< the number of its owner: for a face, edge or vertex its body
    EntityType Type;        ///< what it is
    bool Flag;              ///< the host's to use; the library never sets it to true
};

}  // namespace KesVizCore
