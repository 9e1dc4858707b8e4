/// @file
/// See SoundShape.h.

#include "reading/occ/SoundShape.h"

#include "reading/AbsurdLength.h"

#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Pnt.hxx>

namespace kesview {

namespace {

bool isSound(const gp_Pnt& point) {
    return isSoundLength(point.X()) && isSoundLength(point.Y()) && isSoundLength(point.Z());
}

bool hasSoundVertices(const TopoDS_Shape& shape) {
    for (TopExp_Explorer vertices(shape, TopAbs_VERTEX); vertices.More(); vertices.Next()) {
        if (!isSound(BRep_Tool::Pnt(TopoDS::Vertex(vertices.Current())))) {
            return false;
        }
    }
    return true;
}

bool hasSoundBox(const TopoDS_Shape& shape) {
    try {
        Bnd_Box box;
        BRepBndLib::Add(shape, box, false);
        if (box.IsVoid()) {
            return true;  // nothing to draw is no error of coordinates
        }
        return !box.IsOpen() && isSound(box.CornerMin()) && isSound(box.CornerMax());
    } catch (const Standard_Failure&) {
        return false;
    }
}

void addAbsurd(const TopoDS_Shape& shape, TopAbs_ShapeEnum type, TopTools_MapOfShape& absurd) {
    TopTools_IndexedMapOfShape parts;
    TopExp::MapShapes(shape, type, parts);
    for (int i = 1; i <= parts.Extent(); ++i) {
        const TopoDS_Shape& part = parts.FindKey(i);
        if (!hasSoundVertices(part) || !hasSoundBox(part)) {
            absurd.Add(part);
        }
    }
}

void addBoxes(const TopoDS_Shape& shape, TopAbs_ShapeEnum wanted, TopAbs_ShapeEnum inside,
              const TopTools_MapOfShape& absurd, Bnd_Box& box) {
    for (TopExp_Explorer parts(shape, wanted, inside); parts.More(); parts.Next()) {
        if (!absurd.Contains(parts.Current()) && hasSoundVertices(parts.Current())) {
            BRepBndLib::Add(parts.Current(), box, false);
        }
    }
}

}  // namespace

TopTools_MapOfShape findAbsurd(const TopoDS_Shape& shape) {
    TopTools_MapOfShape absurd;
    if (hasSoundVertices(shape) && hasSoundBox(shape)) {
        return absurd;
    }
    addAbsurd(shape, TopAbs_FACE, absurd);
    addAbsurd(shape, TopAbs_EDGE, absurd);
    return absurd;
}

Bnd_Box soundBox(const TopoDS_Shape& shape, const TopTools_MapOfShape& absurd) {
    Bnd_Box box;
    if (absurd.IsEmpty()) {
        BRepBndLib::Add(shape, box, false);
        return box;
    }
    addBoxes(shape, TopAbs_FACE, TopAbs_SHAPE, absurd, box);
    addBoxes(shape, TopAbs_EDGE, TopAbs_FACE, absurd, box);
    addBoxes(shape, TopAbs_VERTEX, TopAbs_EDGE, absurd, box);
    return box;
}

}  // namespace kesview
