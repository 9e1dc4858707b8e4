/// @file
/// See StepNames.h.

#include "reading/occ/StepNames.h"

#include "reading/occ/Text.h"

#include <Interface_InterfaceModel.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepShape_SolidModel.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace kesview {

namespace {

bool canBeNamed(const Handle(StepRepr_RepresentationItem) & item) {
    return item->IsKind(STANDARD_TYPE(StepShape_FaceSurface)) ||
           item->IsKind(STANDARD_TYPE(StepShape_EdgeCurve)) ||
           item->IsKind(STANDARD_TYPE(StepShape_SolidModel)) ||
           item->IsKind(STANDARD_TYPE(StepShape_ConnectedFaceSet)) ||
           item->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel));
}

std::string nameOfItem(const Handle(StepRepr_RepresentationItem) & item) {
    const std::string name = textOf(item->Name());
    return name == "NONE" ? std::string() : name;
}

}  // namespace

std::string nameOfShape(const ShapeNames& names, const TopoDS_Shape& shape) {
    const std::string* name = names.Seek(shape.Located(TopLoc_Location()));
    return name == nullptr ? std::string() : *name;
}

ShapeNames readStepNames(const Handle(XSControl_WorkSession) & session) {
    ShapeNames names;
    const Handle(Interface_InterfaceModel) model = session->Model();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto item = Handle(StepRepr_RepresentationItem)::DownCast(model->Value(i));
        if (item.IsNull() || !canBeNamed(item)) {
            continue;
        }
        const std::string name = nameOfItem(item);
        const TopoDS_Shape shape =
            name.empty() ? TopoDS_Shape() : TransferBRep::ShapeResult(process, item);
        if (!shape.IsNull()) {
            names.Bind(shape.Located(TopLoc_Location()), name);
        }
    }
    return names;
}

}  // namespace kesview
