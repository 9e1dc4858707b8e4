#pragma once

/// @file
/// The header of a STEP file.

#include "document/Document.h"

#include <Standard_Handle.hxx>

class StepData_StepModel;

namespace kesview {

/// Fills schema, author, originating system and time stamp.
void readStepHeader(const Handle(StepData_StepModel) & model, Document& document);

}  // namespace kesview
