/// @file
/// See PmiFaults.h.

#include "reading/occ/PmiFaults.h"

#include "reading/occ/Findings.h"

#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>

namespace kesview {
namespace {

constexpr const char* words[] = {"ANNOTATION",   "CALLOUT",      "CAMERA",    "COORDINATES",
                                 "DATUM",        "DRAUGHTING",   "TOLERANCE", "TESSELLATED",
                                 "TRIANGULATED", "DIMENSIONAL_", "ANGULAR_",  "VIEW_VOLUME"};

bool isPmi(const ExchangeInstance& instance) {
    return std::any_of(instance.parts.begin(), instance.parts.end(), [](const auto& part) {
        return part.type != "DIMENSIONAL_EXPONENTS" &&
               part.type.find("PRE_DEFINED") == std::string::npos &&
               std::any_of(std::begin(words), std::end(words), [&](const char* word) {
                   return part.type.find(word) != std::string::npos;
               });
    });
}

}  // namespace

void tellPmiFaults(const STEPCAFControl_Reader& reader, const ExchangeFile& file,
                   Document& document) {
    const Handle(StepData_StepModel) model = reader.Reader().StepModel();
    for (Standard_Integer i = 1; i <= model->NbEntities(); ++i) {
        if (!model->IsReportEntity(i)) {
            continue;
        }
        const Standard_Integer number = model->IdentLabel(model->Value(i));
        const ExchangeInstance instance = file.Get(static_cast<EntityNumber>(number));
        if (number > 0 && isPmi(instance)) {
            addFinding(document, {Finding::Severity::Note, "pmi.faulty-record",
                                  "The STEP reader does not know a record of an annotation or "
                                  "finds fault with it; the record's own text is taken instead.",
                                  "#" + std::to_string(number)});
        }
    }
}

}  // namespace kesview
