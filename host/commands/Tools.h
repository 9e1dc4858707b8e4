#pragma once

/// @file
/// What the verbs have done by others. Tests bring their own.

#include "drawing/Drawing.h"
#include "reading/ReadFile.h"
#include "view/Picker.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace kesview {

struct Tools {
    std::function<Document(const std::string& path, const ReadOptions&, const ReadProgress&)> read;
    std::function<std::unique_ptr<Drawing>()> makeDrawing;
    MakePicker makePicker;
    /// Ends the process some time after the limit; none where nobody keeps to it.
    std::function<void(std::chrono::milliseconds limit)> limitTime;
};

}  // namespace kesview
