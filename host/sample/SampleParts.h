#pragma once

/// @file
/// The parts of the sample: a bracket, a bolt and a washer, in millimetres.

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <string>
#include <vector>

namespace kesview {

struct NamedFace {
    std::string name;
    TopoDS_Face face;
};

struct SamplePart {
    TopoDS_Shape shape;
    std::vector<NamedFace> faces;  ///< those that have a name

    /// Throws std::out_of_range where no face has that name.
    const TopoDS_Face& Face(const std::string& name) const;
};

/// An angle of 120 x 60 x 60, 10 thick, with two holes for bolts and a bore. It stands on z = 0
/// with its back at x = 0.
SamplePart makeBracket();

/// M6 x 20 with a hexagon head; the head rests on z = 0, the shank points down.
SamplePart makeBolt();

/// 12.5 x 6.4 x 1.6, on z = 0.
SamplePart makeWasher();

}  // namespace kesview
