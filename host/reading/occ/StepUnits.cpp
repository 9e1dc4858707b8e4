/// @file
/// See StepUnits.h.

#include "reading/occ/StepUnits.h"

#include "reading/occ/Text.h"
#include "reading/occ/Units.h"

#include <Interface_Check.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <StepBasic_ConversionBasedUnitAndLengthUnit.hxx>
#include <StepBasic_SiUnitAndLengthUnit.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepShape_ShapeRepresentation.hxx>
#include <algorithm>
#include <map>
#include <vector>

namespace kesview {

namespace {

using UnitsContext = Handle(StepRepr_GlobalUnitAssignedContext);

UnitsContext unitsOf(const Handle(StepRepr_RepresentationContext) & context) {
    if (context.IsNull()) {
        return {};
    }
    using Full = StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx;
    using Geometric = StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext;
    if (const auto full = Handle(Full)::DownCast(context); !full.IsNull()) {
        return full->GlobalUnitAssignedContext();
    }
    if (const auto geometric = Handle(Geometric)::DownCast(context); !geometric.IsNull()) {
        return geometric->GlobalUnitAssignedContext();
    }
    return UnitsContext::DownCast(context);
}

bool isReadable(const Handle(StepData_StepModel) & model,
                const Handle(Standard_Transient) & entity) {
    const int number = model->Number(entity);
    return number > 0 && !model->Check(number, true)->HasFailed();
}

Handle(StepBasic_NamedUnit)
    lengthUnit(const Handle(StepData_StepModel) & model, const UnitsContext& context) {
    if (context.IsNull() || context->Units().IsNull()) {
        return {};
    }
    for (int i = 1; i <= context->NbUnits(); ++i) {
        const Handle(StepBasic_NamedUnit) unit = context->UnitsValue(i);
        const bool isLength =
            !unit.IsNull() &&
            (unit->IsKind(STANDARD_TYPE(StepBasic_SiUnitAndLengthUnit)) ||
             unit->IsKind(STANDARD_TYPE(StepBasic_ConversionBasedUnitAndLengthUnit)));
        if (isLength && isReadable(model, unit)) {
            return unit;
        }
    }
    return {};
}

std::string ownName(const Handle(StepBasic_NamedUnit) & unit) {
    using Converted = StepBasic_ConversionBasedUnitAndLengthUnit;
    const auto converted = Handle(Converted)::DownCast(unit);
    return converted.IsNull() ? std::string() : textOf(converted->Name());
}

StepUnit unitOf(const Handle(StepData_StepModel) & model, const UnitsContext& context) {
    const Handle(StepBasic_NamedUnit) unit = lengthUnit(model, context);
    STEPConstruct_UnitContext factors;
    if (unit.IsNull() || factors.ComputeFactors(context) != 0 || !factors.LengthDone()) {
        return {"", 1, true, false};
    }
    const double millimetres = factors.LengthFactor();
    const std::string name = unitName(millimetres);
    return {name.empty() ? ownName(unit) : name, millimetres, false, false};
}

}  // namespace

StepUnit readStepUnit(const Handle(StepData_StepModel) & model) {
    struct Use {
        StepUnit unit;
        int count = 0;
    };
    std::vector<Use> uses;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto shape = Handle(StepShape_ShapeRepresentation)::DownCast(model->Value(i));
        if (shape.IsNull()) {
            continue;
        }
        const StepUnit unit = unitOf(model, unitsOf(shape->ContextOfItems()));
        const auto known = std::find_if(uses.begin(), uses.end(), [&unit](const Use& use) {
            return use.unit.isMissing == unit.isMissing && use.unit.millimetres == unit.millimetres;
        });
        if (known == uses.end()) {
            uses.push_back({unit, 1});
        } else {
            ++known->count;
        }
    }
    if (uses.empty()) {
        return {};
    }
    const auto most = std::max_element(
        uses.begin(), uses.end(), [](const Use& a, const Use& b) { return a.count < b.count; });
    StepUnit unit = most->unit;
    unit.isMixed = uses.size() > 1;
    return unit;
}

}  // namespace kesview
