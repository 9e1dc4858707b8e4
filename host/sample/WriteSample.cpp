#include "sample/WriteSample.h"

#include "sample/SampleColors.h"
#include "sample/SamplePmi.h"
#include "sample/SampleViews.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <IFSelect_ReturnStatus.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_StepModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kesview {
namespace {

namespace fs = std::filesystem;

/// A folder that goes with its contents.
class WorkFolder {
public:
    WorkFolder() {
        std::string pattern = (fs::temp_directory_path() / "kesview-sample-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("No folder can be made in " +
                                     fs::temp_directory_path().string());
        path = pattern;
    }
    ~WorkFolder() {
        std::error_code error;
        fs::remove_all(path, error);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    fs::path path;
};

Handle(TCollection_HAsciiString) text(const char* letters) {
    return new TCollection_HAsciiString(letters);
}

/// Nothing of the day, the machine or the user.
void setHeader(const Handle(StepData_StepModel) & model) {
    APIHeaderSection_MakeHeader header(model);
    header.SetName(text("bracket.step"));
    header.SetTimeStamp(text("2026-01-01T00:00:00"));
    header.SetAuthorValue(1, text("kesview"));
    header.SetOrganizationValue(1, text("kesview"));
    header.SetOriginatingSystem(text("kesview-sample"));
    header.SetAuthorisation(text(""));
}

/// By a file of its own: this version of the library writes nowhere else.
std::string written(STEPCAFControl_Writer& writer) {
    const WorkFolder folder;
    const std::string path = (folder.path / "bracket.step").string();
    if (writer.Write(path.c_str()) != IFSelect_RetDone)
        throw std::runtime_error("Open CASCADE cannot write the sample");
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string writtenByOcct() {
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    STEPCAFControl_Controller::Init();  // else what is set next does not last
    constexpr int ap242 = 5;
    Interface_Static::SetIVal("write.step.schema", ap242);
    Interface_Static::SetIVal("write.stepcaf.subshapes.name", 1);

    const SampleAssembly sample = makeSampleAssembly();
    addSamplePmi(sample);
    STEPCAFControl_Writer writer;
    writer.SetColorMode(Standard_False);
    if (!writer.Transfer(sample.document, STEPControl_AsIs))
        throw std::runtime_error("Open CASCADE cannot transfer the sample");
    setHeader(writer.ChangeWriter().Model());
    return written(writer);
}

}  // namespace

std::string makeSample() {
    ExchangeText text(writtenByOcct());
    text.Replace("DRAUGHTING_PRE_DEFINED_COLOUR('white')", "DRAUGHTING_PRE_DEFINED_COLOUR('blue')");
    // The writer takes the zone of a position for one of a run-out, whose angle it cannot give.
    for (const int faulty : text.FindAll("RUNOUT_ZONE_DEFINITION(")) {
        text.Remove(faulty);
    }
    addColors(text);
    addNote(text);
    addViews(text);
    return text.Text();
}

}  // namespace kesview
