/// @file
/// See StepHeader.h.

#include "reading/occ/StepHeader.h"

#include "reading/occ/SchemaName.h"
#include "reading/occ/Text.h"
#include "reading/part21/ExchangeText.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <HeaderSection_FileName.hxx>
#include <HeaderSection_FileSchema.hxx>
#include <Interface_HArray1OfHAsciiString.hxx>
#include <StepData_StepModel.hxx>

namespace kesview {

namespace {

std::string headerText(const Handle(TCollection_HAsciiString) & text) {
    return decodeExchangeText(textOf(text));
}

/// The texts that are not empty, with commas between.
std::string joined(const Handle(Interface_HArray1OfHAsciiString) & texts) {
    std::string all;
    if (texts.IsNull()) {
        return all;
    }
    for (const Handle(TCollection_HAsciiString) & part : texts->Array1()) {
        const std::string text = headerText(part);
        if (text.find_first_not_of(' ') != std::string::npos) {
            all += (all.empty() ? "" : ", ") + text;
        }
    }
    return all;
}

}  // namespace

void readStepHeader(const Handle(StepData_StepModel) & model, Document& document) {
    const APIHeaderSection_MakeHeader header(model);
    if (header.HasFs()) {
        document.schema = schemaName(joined(header.FsValue()->SchemaIdentifiers()));
    }
    if (header.HasFn()) {
        document.author = joined(header.FnValue()->Author());
        document.originatingSystem = headerText(header.FnValue()->OriginatingSystem());
        document.timeStamp = headerText(header.FnValue()->TimeStamp());
    }
}

}  // namespace kesview
