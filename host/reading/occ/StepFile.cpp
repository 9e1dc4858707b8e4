/// @file
/// See StepFile.h.

#include "reading/occ/StepFile.h"

#include "reading/occ/Findings.h"
#include "reading/occ/PartBodies.h"
#include "reading/occ/Progress.h"
#include "reading/occ/ReadPmi.h"
#include "reading/occ/ShortLists.h"
#include "reading/occ/StepHeader.h"
#include "reading/occ/StepLosses.h"
#include "reading/occ/StepUnits.h"
#include "reading/occ/WorldPlaces.h"

#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XSControl_WorkSession.hxx>
#include <filesystem>
#include <optional>
#include <sstream>
#include <utility>

namespace kesview {

namespace {

/// The reader with its model, and the document that it fills.
struct StepReading {
    STEPCAFControl_Reader reader;
    Handle(TDocStd_Document) source = new TDocStd_Document("BinXCAF");
    StepUnit unit;

    Handle(StepData_StepModel) Model() const { return reader.Reader().StepModel(); }
};

IFSelect_ReturnStatus readRecords(STEPCAFControl_Reader& reader, const std::string& path) {
    std::optional<std::string> shortened = textWithShortLists(path);
    if (!shortened) {
        return reader.ReadFile(path.c_str());
    }
    std::istringstream stream(std::move(*shortened));
    return reader.ChangeReader().ReadStream(path.c_str(), stream);
}

void open(StepReading& reading, const std::string& path, const ReadProgress& progress) {
    reading.reader.SetColorMode(true);
    reading.reader.SetNameMode(true);
    reading.reader.SetLayerMode(true);
    reading.reader.SetSHUOMode(true);
    reading.reader.SetPropsMode(false);
    reading.reader.SetMatMode(false);
    // annotations and views are read from the file itself: what the reader makes of them lacks
    // much, costs time, and throws on some files
    reading.reader.SetGDTMode(false);
    reading.reader.SetViewMode(false);

    tellProgress(progress, "reading", 0);
    // files beside it that it refers to are found from an absolute path only
    const std::string absolute = std::filesystem::absolute(path).string();
    if (readRecords(reading.reader, absolute) != IFSelect_RetDone) {
        throw ReadError(ReadFailure::Damaged,
                        "The STEP file is damaged or incomplete: it cannot be read to its end; "
                        "write or copy it anew.");
    }
    tellProgress(progress, "reading", 1);
}

/// Sets the document's unit so that numbers of a file without one are taken as millimetres.
void prepareUnit(StepReading& reading) {
    constexpr double metresPerMillimetre = 0.001;
    reading.unit = readStepUnit(reading.Model());
    // the reader takes a missing unit for metres
    XCAFDoc_DocumentTool::SetLengthUnit(reading.source,
                                        reading.unit.isMissing ? 1.0 : metresPerMillimetre);
}

void transfer(StepReading& reading, const ReadProgress& progress) {
    prepareUnit(reading);
    const Handle(Progress) indicator = new Progress("transferring", progress);
    // nothing to transfer is told later, by the bodies that are not there
    reading.reader.Transfer(reading.source, indicator->Start());
    tellProgress(progress, "transferring", 1);
}

void tellUnit(const StepUnit& unit, Document& document) {
    document.unit = unit.name;
    document.millimetresPerUnit = unit.millimetres;
    if (unit.isMissing) {
        addFinding(document, {Finding::Severity::Warning, "unit.missing",
                              "The file names no unit of length; its numbers are taken as "
                              "millimetres.",
                              ""});
    }
    if (unit.isMixed) {
        addFinding(document,
                   {Finding::Severity::Note, "unit.mixed",
                    "Parts of the file are in different units of length; all that have one "
                    "are converted to millimetres.",
                    ""});
    }
}

void readAnnotations(StepReading& reading, const std::string& path, const Structure& structure,
                     const ShapeIndex& index, IdCounter& ids, Document& document) {
    const std::vector<Matrix> places = firstPlaces(document);
    ShapeLookup lookup;
    lookup.link = [&index](const TopoDS_Shape& shape) { return index.Find(shape); };
    lookup.worldFromProduct = [&](const std::string& entry) {
        const auto product = structure.productOfEntry.find(entry);
        return product == structure.productOfEntry.end() ? identityMatrix : places[product->second];
    };
    lookup.nextId = [&ids] { return ids.Next(); };
    readPmi(reading.source, reading.reader, path, lookup, document);
}

}  // namespace

Document readStepFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress) {
    Document document;
    document.format = "STEP";
    StepReading reading;
    open(reading, path, progress);
    transfer(reading, progress);
    readStepHeader(reading.Model(), document);
    tellUnit(reading.unit, document);
    tellUnreadRecords(reading.reader, document);
    tellLostShapes(reading.reader, document);

    IdCounter ids;
    ShapeIndex index;
    const ShapeNames names = readStepNames(reading.reader.Reader().WS());
    const Structure structure =
        readStructure(reading.source, std::filesystem::path(path).stem().string(), ids, document);
    fillBodies(reading.source, structure, {options, ids, index, names, document}, progress);
    if (options.withPmi) {
        readAnnotations(reading, path, structure, index, ids, document);
    }
    return document;
}

}  // namespace kesview
