#pragma once

/// @file
/// kesview render: a picture of the scene as a PNG file.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <cstdint>
#include <string>

namespace kesview {

struct RenderResult {
    std::string file;
    std::string output;
    std::string view;
    int width = 0;
    int height = 0;
    std::uint64_t triangles = 0;    ///< that were drawn, annotations included
    std::uint64_t annotations = 0;  ///< that are shown
};

std::string toText(const RenderResult& result);
std::string toJson(const RenderResult& result);

/// Writes the picture whole or not at all.
ExitCode render(const RenderOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
