#pragma once

/// @file
/// Makes a session's view show what render and pick were asked for.

#include "commands/Options.h"
#include "commands/Session.h"

#include <optional>
#include <string>

namespace kesview {

/// Throws UsageError for what means nothing in any file, which nobody should wait to be told.
void checkScene(const SceneOptions& options);

/// Size, what is shown, camera and section. Answers the name of the view. Throws UsageError where
/// a view, a selector or a plane means nothing.
std::string setUpScene(const SceneOptions& options, Session& session);

/// "x=10", "y=-5.5", "z=0": keeps what has smaller coordinates; "nx,ny,nz,d" keeps where
/// nx * x + ny * y + nz * z <= d. Throws UsageError for another form.
SavedView::Plane parseSection(const std::string& text);

/// Bottom colour, and top colour of a gradient.
struct Background {
    Color bottom = {255, 255, 255, 255};
    std::optional<Color> top;
};

/// "white", "black", "grey", "#rrggbb", or two of them from the bottom up: "white,#8899aa". Throws
/// UsageError for another form.
Background parseBackground(const std::string& text);

}  // namespace kesview
