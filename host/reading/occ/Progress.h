#pragma once

/// @file
/// Hands Open CASCADE's progress on to the caller of the reader.

#include "reading/ReadFile.h"

#include <Message_ProgressIndicator.hxx>
#include <string>

namespace kesview {

/// Tells one stage, 0 to 1, in steps of a hundredth at most. Open CASCADE calls it from one
/// thread at a time. The caller may leave the function empty.
class Progress : public Message_ProgressIndicator {
public:
    Progress(std::string stage, const ReadProgress& progress);

protected:
    void Show(const Message_ProgressScope& scope, bool isForced) override;

private:
    std::string _stage;
    const ReadProgress& _progress;
    double _shown = 0;
};

/// Tells the stage itself, where there is no range to follow.
void tellProgress(const ReadProgress& progress, const std::string& stage, double fraction);

}  // namespace kesview
