/// @file
/// See ShapeIndex.h.

#include "reading/occ/ShapeIndex.h"

#include <TopLoc_Location.hxx>

namespace kesview {

void ShapeIndex::Add(const TopoDS_Shape& shape, const EntityLink& link) {
    const TopoDS_Shape key = shape.Located(TopLoc_Location());
    if (!_links.IsBound(key)) {
        _links.Bind(key, link);
    }
}

std::optional<EntityLink> ShapeIndex::Find(const TopoDS_Shape& shape) const {
    if (shape.IsNull()) {
        return std::nullopt;
    }
    const EntityLink* link = _links.Seek(shape.Located(TopLoc_Location()));
    return link == nullptr ? std::nullopt : std::optional<EntityLink>(*link);
}

}  // namespace kesview
