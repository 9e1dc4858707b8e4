#pragma once

/// @file
/// Options that more than one verb has, and values with a form of their own.

#include "commands/Options.h"

#include <string>

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace kesview {

void addCommonOptions(CLI::App& app, CommonOptions& options);
void addSceneOptions(CLI::App& app, SceneOptions& options);

/// Refuses the empty text, which a shell makes of a variable that is not set.
CLI::Validator notEmpty();

/// "X,Y" as whole numbers. Throws CLI::ValidationError, as the next one.
void parsePixel(const std::string& text, int& x, int& y);
/// "WxH", each from 1 to 16384.
void parseSize(const std::string& text, int& width, int& height);

}  // namespace kesview
