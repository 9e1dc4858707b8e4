/// @file
/// See PmiShapes.h.

#include "reading/occ/PmiShapes.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDF_Tool.hxx>
#include <TDocStd_Document.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>

namespace kesview {
namespace {

constexpr double largestSensibleSize = 1e12;

}  // namespace

void PmiBox::Add(const std::array<double, 3>& point) {
    const bool first = IsEmpty();
    for (std::size_t i = 0; i < 3; ++i) {
        low[i] = first ? point[i] : std::min(low[i], point[i]);
        high[i] = first ? point[i] : std::max(high[i], point[i]);
    }
}

std::array<double, 3> PmiBox::Centre() const {
    return {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2};
}

double PmiBox::Diagonal() const {
    return IsEmpty() ? 0 : std::hypot(high[0] - low[0], high[1] - low[1], high[2] - low[2]);
}

PmiShapes::PmiShapes(const STEPCAFControl_Reader& reader) : _reader(reader) {
    const Handle(XSControl_WorkSession) session = reader.Reader().WS();
    _process = session->TransferReader()->TransientProcess();
    const Handle(StepData_StepModel) model = reader.Reader().StepModel();
    for (Standard_Integer i = 1; i <= model->NbEntities(); ++i) {
        const Handle(Standard_Transient) entity = model->Value(i);
        const Standard_Integer number = model->IdentLabel(entity);
        if (number > 0) {
            _entities.emplace(static_cast<EntityNumber>(number), entity);
        }
    }
}

TopoDS_Shape PmiShapes::Find(EntityNumber number) const {
    const auto entity = _entities.find(number);
    return entity == _entities.end() ? TopoDS_Shape()
                                     : TransferBRep::ShapeResult(_process, entity->second);
}

std::string PmiShapes::EntryOf(EntityNumber productDefinition) const {
    const TopoDS_Shape shape = Find(productDefinition);
    TDF_Label label;
    if (shape.IsNull() || !_reader.GetShapeLabelMap().Find(shape, label)) {
        return {};
    }
    TCollection_AsciiString entry;
    TDF_Tool::Entry(label, entry);
    return entry.ToCString();
}

PmiBox boxOf(const TopoDS_Shape& shape) {
    PmiBox box;
    Bnd_Box bounds;
    if (!shape.IsNull()) {
        BRepBndLib::Add(shape, bounds, Standard_False);
    }
    if (bounds.IsVoid() || bounds.IsOpen()) {
        return box;
    }
    const gp_Pnt low = bounds.CornerMin();
    const gp_Pnt high = bounds.CornerMax();
    if (low.Distance(high) < largestSensibleSize) {
        box.Add({low.X(), low.Y(), low.Z()});
        box.Add({high.X(), high.Y(), high.Z()});
    }
    return box;
}

PmiBox boxOfDocument(const Handle(TDocStd_Document) & source) {
    PmiBox box;
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(source->Main())->GetFreeShapes(roots);
    for (const TDF_Label& root : roots) {
        const PmiBox part = boxOf(XCAFDoc_ShapeTool::GetShape(root));
        if (!part.IsEmpty()) {
            box.Add(part.low);
            box.Add(part.high);
        }
    }
    return box;
}

}  // namespace kesview
