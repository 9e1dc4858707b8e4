#pragma once

/// @file
/// Catches what VTK says, which otherwise goes to the terminal.

#include <string>
#include <vtkOutputWindow.h>

namespace kesview {

/// Keeps the first error. The program's log gets warnings as such and the rest as debugging.
class MessageLog : public vtkOutputWindow {
public:
    static MessageLog* New();
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    /// In one line; empty where there was none.
    const std::string& FirstError() const { return _error; }

    void DisplayText(const char* text) override;
    void DisplayErrorText(const char* text) override;
    void DisplayWarningText(const char* text) override;
    void DisplayGenericWarningText(const char* text) override;
    void DisplayDebugText(const char* text) override;

protected:
    MessageLog() = default;
    ~MessageLog() override = default;

private:
    std::string _error;
};

/// While it exists VTK speaks to @p log and to nothing else.
class CatchMessages {
public:
    explicit CatchMessages(MessageLog& log);
    ~CatchMessages();
    CatchMessages(const CatchMessages&) = delete;
    CatchMessages& operator=(const CatchMessages&) = delete;

private:
    int _verbosity;  ///< of VTK's own log on the terminal, before
};

}  // namespace kesview
