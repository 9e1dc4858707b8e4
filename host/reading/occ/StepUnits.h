#pragma once

/// @file
/// The unit of length of a STEP file.

#include <Standard_Handle.hxx>
#include <string>

class StepData_StepModel;

namespace kesview {

struct StepUnit {
    std::string name;        ///< empty where the file names none
    double millimetres = 1;  ///< 1 where the file names none
    bool isMissing = false;
    bool isMixed = false;  ///< representations differ; this is the unit of most of them
};

/// Looks at the contexts of the representations of shapes. Transferred shapes are converted to
/// millimetres whatever the unit.
StepUnit readStepUnit(const Handle(StepData_StepModel) & model);

}  // namespace kesview
