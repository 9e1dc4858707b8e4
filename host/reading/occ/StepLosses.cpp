/// @file
/// See StepLosses.h.

#include "reading/occ/StepLosses.h"

#include "reading/occ/Findings.h"
#include "reading/occ/Text.h"

#include <Interface_Check.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_SolidModel.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <map>
#include <set>

namespace kesview {

namespace {

Handle(Interface_InterfaceModel) modelOf(const STEPCAFControl_Reader& reader) {
    return reader.Reader().WS()->Model();
}

std::string keyOf(const Handle(Interface_InterfaceModel) & model, int number) {
    const Handle(StepData_StepModel) step = Handle(StepData_StepModel)::DownCast(model);
    return "#" + std::to_string(step->IdentLabel(model->Value(number)));
}

/// Exact shapes are not made of them; what they hold is not in the document.
bool isTessellatedShape(const std::string& type) {
    static const std::set<std::string> types = {
        "TESSELLATED_SOLID", "TESSELLATED_SHELL",         "TESSELLATED_CONNECTING_EDGE",
        "TRIANGULATED_FACE", "COMPLEX_TRIANGULATED_FACE", "CUBIC_BEZIER_TRIANGULATED_FACE",
        "TESSELLATED_WIRE",  "TESSELLATED_EDGE",          "TESSELLATED_VERTEX"};
    return types.count(type) != 0;
}

void tellUnknownTypes(const Handle(Interface_InterfaceModel) & model, Document& document) {
    std::map<std::string, std::uint64_t> counts;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto unknown = Handle(StepData_UndefinedEntity)::DownCast(model->Value(i));
        if (!unknown.IsNull()) {
            ++counts[unknown->StepType()];
        }
    }
    std::string types;
    std::uint64_t other = 0;
    for (const auto& [type, count] : counts) {
        if (isTessellatedShape(type)) {
            addFinding(document,
                       {Finding::Severity::Error, "shape.tessellated",
                        "Shapes given by triangles alone (" + type + ") are not read.", type},
                       count);
            continue;
        }
        types += (types.empty() ? "" : ", ") + type + " (" + std::to_string(count) + ")";
        other += count;
    }
    addFinding(document,
               {Finding::Severity::Note, "record.unknown-type",
                "Records of types that the STEP reader does not know: " + types + ".", ""},
               other);
}

void tellFailedRecords(const Handle(Interface_InterfaceModel) & model, Document& document) {
    std::uint64_t failed = 0;
    std::string first;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        if (!model->Check(i, true)->HasFailed()) {
            continue;
        }
        if (++failed == 1) {
            first = keyOf(model, i);
        }
    }
    addFinding(
        document,
        {Finding::Severity::Warning, "record.damaged",
         "Records do not follow the rules of their type; values in them may be missing.", first},
        failed);
}

bool holdsSolid(const TopoDS_Shape& shape) {
    return TopExp_Explorer(shape, TopAbs_SOLID).More();
}

}  // namespace

void tellUnreadRecords(const STEPCAFControl_Reader& reader, Document& document) {
    tellFailedRecords(modelOf(reader), document);
    tellUnknownTypes(modelOf(reader), document);
}

void tellLostShapes(const STEPCAFControl_Reader& reader, Document& document) {
    const Handle(Interface_InterfaceModel) model = modelOf(reader);
    const Handle(Transfer_TransientProcess) process =
        reader.Reader().WS()->TransferReader()->TransientProcess();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(Standard_Transient) entity = model->Value(i);
        const bool isSolid = entity->IsKind(STANDARD_TYPE(StepShape_SolidModel));
        if (!isSolid && !entity->IsKind(STANDARD_TYPE(StepShape_FaceSurface))) {
            continue;
        }
        const TopoDS_Shape shape = TransferBRep::ShapeResult(process, entity);
        if (isSolid && shape.IsNull()) {
            addFinding(document, {Finding::Severity::Error, "shape.lost-solid",
                                  "Solids of the file came out as nothing.", keyOf(model, i)});
        } else if (isSolid && !holdsSolid(shape)) {
            addFinding(document, {Finding::Severity::Error, "shape.no-solid",
                                  "Solids of the file do not close; they came out as loose faces.",
                                  keyOf(model, i)});
        } else if (shape.IsNull()) {
            addFinding(document, {Finding::Severity::Error, "shape.lost-face",
                                  "Faces of the file came out as nothing.", keyOf(model, i)});
        }
    }
    using Files = NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>;
    for (Files::Iterator files(reader.ExternFiles()); files.More(); files.Next()) {
        const Handle(STEPCAFControl_ExternFile)& file = files.Value();
        if (file->GetLoadStatus() != IFSelect_RetDone || !file->GetTransferStatus()) {
            addFinding(document,
                       {Finding::Severity::Error, "reference.unresolved",
                        "The file refers to another file, " + std::string(files.Key().ToCString()) +
                            ", which could not be read; put it beside this one.",
                        files.Key().ToCString()});
        }
    }
}

}  // namespace kesview
