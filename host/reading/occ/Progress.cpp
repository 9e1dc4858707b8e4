/// @file
/// See Progress.h.

#include "reading/occ/Progress.h"

#include <utility>

namespace kesview {

Progress::Progress(std::string stage, const ReadProgress& progress)
    : _stage(std::move(stage)), _progress(progress) {
    tellProgress(_progress, _stage, 0);
}

void Progress::Show(const Message_ProgressScope& /*scope*/, bool /*isForced*/) {
    constexpr double step = 0.01;
    const double position = GetPosition();
    if (position < _shown + step) {
        return;
    }
    _shown = position;
    tellProgress(_progress, _stage, position);
}

void tellProgress(const ReadProgress& progress, const std::string& stage, double fraction) {
    if (progress) {
        progress(stage, fraction);
    }
}

}  // namespace kesview
