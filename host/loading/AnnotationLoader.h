#pragma once

/// @file
/// Loads annotations: how they look, and what they mean.

#include "loading/Load.h"

namespace kesview {

/// Fills the annotations and semantic records of @p model, and enters the annotations in its map.
/// The geometry must be loaded. Lines and areas leave @p document, texts stay.
///
/// The mechanical id of an annotation is its key. The links of an annotation become the visual and
/// mechanical ids of the elements; one to what no element stands for, such as a vertex or a
/// product, stands in the semantic record alone. The datums become the attribute "DatumRefDatas".
///
/// Where the file has no drawing but a plane, the text of the semantic values is drawn there,
/// a hundredth of the largest body high.
void loadAnnotations(Document& document, LoadedModel& model);

}  // namespace kesview
