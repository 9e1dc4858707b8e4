#pragma once

/// @file
/// Loads saved views: a view, which is a plane, and a capture, which is a camera, for each.

#include "loading/Load.h"

namespace kesview {

/// Fills the views and captures of @p model, in the order of the document; the annotations must be
/// loaded. They stand in the container alone, not in the map of elements, which they borrow. None
/// is active or hidden: what is shown is for the commands to say.
///
/// The plane of a view and the frame of a capture lie at the target, u to the right and v up, at a
/// right angle to the line of sight. What cannot be had is a finding of @p document: a camera
/// without direction leaves both without a frame and the capture's camera undefined, a member that
/// the document does not hold is left out.
///
/// The library leaves open what the zoom factor of an orthographic camera means. Here it is the
/// height, in millimetres, of what is seen of the plane through the target; 1, as it is before it
/// was ever set, where that is not known.
void loadViews(Document& document, LoadedModel& model);

}  // namespace kesview
