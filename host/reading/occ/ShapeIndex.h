#pragma once

/// @file
/// Which entity of the document a shape became.

#include "document/Document.h"

#include <NCollection_DataMap.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>
#include <optional>

namespace kesview {

/// Shapes are told apart without their location and orientation: what is annotated on one use of
/// a face speaks of the face. Where two entities share one shape, the first stays.
class ShapeIndex {
public:
    void Add(const TopoDS_Shape& shape, const EntityLink& link);
    std::optional<EntityLink> Find(const TopoDS_Shape& shape) const;

private:
    NCollection_DataMap<TopoDS_Shape, EntityLink, TopTools_ShapeMapHasher> _links;
};

}  // namespace kesview
