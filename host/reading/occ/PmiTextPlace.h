#pragma once

/// @file
/// Where texts stand that the file has no drawing for.

#include "document/Document.h"
#include "reading/occ/PmiShapes.h"

#include <map>

namespace kesview {

/// Places texts around the model, outside of its box, upright and readable from outside, each
/// with a line to what it speaks of. Texts at one place are stacked.
class PmiTextPlaces {
public:
    /// @p model in the world; where it is empty, texts stand around the origin.
    explicit PmiTextPlaces(const PmiBox& model);

    /// Adds the annotation's semantic text to its drawing, and the plane that it stands in.
    /// @p target is what it applies to, in the world; where it is empty, the model.
    void Place(const PmiBox& target, Annotation& annotation);

private:
    PmiBox _model;
    std::map<Vector, int> _stacked;  ///< texts by place
};

}  // namespace kesview
