#pragma once

/// @file
/// Colours as the file writes them.

#include "document/Document.h"

#include <Standard_Handle.hxx>
#include <optional>

class Quantity_ColorRGBA;
class TDF_Label;
class XCAFDoc_ColorTool;

namespace kesview {

/// Red, green and blue as a file writes them (not linear light), alpha, 0 to 255.
Color colorOf(const Quantity_ColorRGBA& color);

/// The colour of a label of a shape: of its surfaces, or else its general one. None where the
/// label has neither.
std::optional<Color> surfaceColor(const Handle(XCAFDoc_ColorTool) & colors, const TDF_Label& label);

/// The colour of a label's curves, if it has one of their own.
std::optional<Color> curveColor(const Handle(XCAFDoc_ColorTool) & colors, const TDF_Label& label);

}  // namespace kesview
