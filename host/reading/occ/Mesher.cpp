/// @file
/// See Mesher.h.

#include "reading/occ/Mesher.h"

#include "reading/occ/SoundShape.h"

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Builder.hxx>
#include <Bnd_Box.hxx>
#include <IMeshTools_Parameters.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <algorithm>
#include <cmath>

namespace kesview {

namespace {

void addSound(const TopoDS_Shape& shape, TopAbs_ShapeEnum wanted, TopAbs_ShapeEnum inside,
              const TopTools_MapOfShape& absurd, TopoDS_Compound& sound) {
    const BRep_Builder builder;
    for (TopExp_Explorer parts(shape, wanted, inside); parts.More(); parts.Next()) {
        if (!absurd.Contains(parts.Current())) {
            builder.Add(sound, parts.Current());
        }
    }
}

TopoDS_Shape withoutAbsurd(const TopoDS_Shape& shape, const TopTools_MapOfShape& absurd) {
    if (absurd.IsEmpty()) {
        return shape;
    }
    TopoDS_Compound sound;
    BRep_Builder().MakeCompound(sound);
    addSound(shape, TopAbs_FACE, TopAbs_SHAPE, absurd, sound);
    addSound(shape, TopAbs_EDGE, TopAbs_FACE, absurd, sound);
    return sound;
}

/// Faces with many holes take the default algorithm time that grows with their square.
bool hasFaceOfManyHoles(const TopoDS_Shape& shape) {
    constexpr int many = 30;
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        if (faces.Current().NbChildren() > many) {
            return true;
        }
    }
    return false;
}

}  // namespace

double meshShape(const TopoDS_Shape& shape, const TopTools_MapOfShape& absurd,
                 const ReadOptions& options) {
    const Bnd_Box box = soundBox(shape, absurd);
    const double diagonal = box.IsVoid() ? 0 : std::sqrt(box.SquareExtent());

    IMeshTools_Parameters parameters;
    parameters.Deflection = std::max(options.deflection * diagonal, 1e-6);
    parameters.Angle = options.angle;
    parameters.InParallel = true;
    if (hasFaceOfManyHoles(shape)) {
        parameters.MeshAlgo = IMeshTools_MeshAlgoType_Delabella;
    }
    try {
        const BRepMesh_IncrementalMesh mesh(withoutAbsurd(shape, absurd), parameters);
    } catch (const Standard_Failure&) {
        // what has no triangles now is told face by face
    }
    return parameters.Deflection;
}

}  // namespace kesview
