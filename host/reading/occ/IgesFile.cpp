/// @file
/// See IgesFile.h.

#include "reading/occ/IgesFile.h"

#include "reading/occ/Findings.h"
#include "reading/occ/PartBodies.h"
#include "reading/occ/Progress.h"
#include "reading/occ/Text.h"
#include "reading/occ/Units.h"

#include <IGESCAFControl_Reader.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <TDocStd_Document.hxx>
#include <filesystem>
#include <fstream>

namespace kesview {

namespace {

/// Whether the file ends with its terminate section: a line with a T in column 73.
bool isTerminated(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string last;
    for (std::string line; std::getline(file, line);) {
        if (line.size() > 72) {
            last = line;
        }
    }
    return last.size() > 72 && last[72] == 'T';
}

void readHeader(const Handle(IGESData_IGESModel) & model, Document& document) {
    const IGESData_GlobalSection& header = model->GlobalSection();
    document.schema =
        header.IGESVersion() > 0 ? "IGES version " + std::to_string(header.IGESVersion()) : "";
    document.author = textOf(header.AuthorName());
    document.originatingSystem = textOf(header.SystemId());
    document.timeStamp = textOf(header.Date());
    document.millimetresPerUnit = header.UnitValue() * header.CascadeUnit();
    const std::string name = unitName(document.millimetresPerUnit);
    document.unit = name.empty() ? textOf(header.UnitName()) : name;
}

void tellDamage(const Handle(IGESData_IGESModel) & model, const std::string& path,
                Document& document) {
    if (!isTerminated(path)) {
        addFinding(document, {Finding::Severity::Error, "file.truncated",
                              "The file ends before its terminate section; what stood behind is "
                              "lost.",
                              ""});
    }
    std::uint64_t failed = 0;
    for (int i = 1; i <= model->NbEntities(); ++i) {
        failed += model->Check(i, true)->HasFailed() || model->IsErrorEntity(i) ? 1U : 0U;
    }
    addFinding(
        document,
        {Finding::Severity::Warning, "record.damaged",
         "Records do not follow the rules of their type; values in them may be missing.", ""},
        failed);
}

/// Open CASCADE crashes on a name without text.
bool hasDamagedName(const Handle(IGESData_IGESModel) & model) {
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(IGESData_IGESEntity) entity = model->Entity(i);
        if (entity->HasName() && entity->NameValue().IsNull()) {
            return true;
        }
    }
    return false;
}

void skipDamagedNames(IGESCAFControl_Reader& reader, const Handle(IGESData_IGESModel) & model,
                      Document& document) {
    if (hasDamagedName(model)) {
        reader.SetNameMode(false);
        addFinding(document, {Finding::Severity::Warning, "name.damaged",
                              "Names are left out: some of them cannot be read.", ""});
    }
}

}  // namespace

Document readIgesFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress) {
    Document document;
    document.format = "IGES";
    IGESCAFControl_Reader reader;
    reader.SetColorMode(true);
    reader.SetNameMode(true);
    reader.SetLayerMode(true);
    tellProgress(progress, "reading", 0);
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone) {
        throw ReadError(ReadFailure::Damaged,
                        "The IGES file is damaged: it cannot be read; write or copy it anew.");
    }
    tellProgress(progress, "reading", 1);
    const Handle(IGESData_IGESModel) model = reader.IGESModel();
    readHeader(model, document);
    tellDamage(model, path, document);
    skipDamagedNames(reader, model, document);

    Handle(TDocStd_Document) source = new TDocStd_Document("BinXCAF");
    const Handle(Progress) indicator = new Progress("transferring", progress);
    reader.Transfer(source, indicator->Start());
    tellProgress(progress, "transferring", 1);

    IdCounter ids;
    ShapeIndex index;
    const ShapeNames names;
    const Structure structure =
        readStructure(source, std::filesystem::path(path).stem().string(), ids, document);
    fillBodies(source, structure, {options, ids, index, names, document}, progress);
    return document;
}

}  // namespace kesview
