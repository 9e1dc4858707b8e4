#include "drawing/vtk/MessageLog.h"

#include <spdlog/spdlog.h>
#include <vtkLogger.h>
#include <vtkObjectFactory.h>

namespace kesview {
namespace {

std::string inOneLine(const char* text) {
    std::string line = text ? text : "";
    while (!line.empty() && (line.back() == '\n' || line.back() == ' '))
        line.pop_back();
    for (char& letter : line) {
        if (letter == '\n')
            letter = ' ';
    }
    return line;
}

/// VTK looks for a screen of X first and says so; by then it has all functions from our context.
bool isExpected(const std::string& error) {
    return error.find("GLEW could not be initialized") != std::string::npos;
}

}  // namespace

vtkStandardNewMacro(MessageLog)

    void MessageLog::DisplayText(const char* text) {
    spdlog::debug("VTK: {}", inOneLine(text));
}

void MessageLog::DisplayErrorText(const char* text) {
    const std::string error = inOneLine(text);
    if (isExpected(error))
        return;
    spdlog::debug("VTK: {}", error);
    if (_error.empty())
        _error = error;
}

void MessageLog::DisplayWarningText(const char* text) {
    spdlog::warn("VTK: {}", inOneLine(text));
}

void MessageLog::DisplayGenericWarningText(const char* text) {
    DisplayWarningText(text);
}

void MessageLog::DisplayDebugText(const char* text) {
    DisplayText(text);
}

CatchMessages::CatchMessages(MessageLog& log) : _verbosity(vtkLogger::GetCurrentVerbosityCutoff()) {
    vtkOutputWindow::SetInstance(&log);
    vtkLogger::SetStderrVerbosity(vtkLogger::VERBOSITY_OFF);
}

CatchMessages::~CatchMessages() {
    vtkOutputWindow::SetInstance(nullptr);
    vtkLogger::SetStderrVerbosity(static_cast<vtkLogger::Verbosity>(_verbosity));
}

}  // namespace kesview
