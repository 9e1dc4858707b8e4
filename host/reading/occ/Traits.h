#pragma once

/// @file
/// What an XCAF document says of a shape beside its geometry: name, colour, layers, visibility.

#include "document/Document.h"

#include <NCollection_DataMap.hxx>
#include <Standard_Handle.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS_Shape.hxx>
#include <optional>
#include <string>
#include <vector>

class TDF_Label;
class TDocStd_Document;
class XCAFDoc_ColorTool;
class XCAFDoc_LayerTool;
class XCAFDoc_ShapeTool;

namespace kesview {

struct Traits {
    std::string name;
    std::optional<Color> color;       ///< of surfaces
    std::optional<Color> curveColor;  ///< of edges and wires where it is given apart
    std::vector<std::string> layers;
    bool hidden = false;  ///< itself, or by a layer that is not shown
};

/// By the shape with its location in the product.
using TraitsMap = NCollection_DataMap<TopoDS_Shape, Traits, TopTools_ShapeMapHasher>;

/// Reads traits of labels. Keeps the document alive.
class TraitsReader {
public:
    explicit TraitsReader(const Handle(TDocStd_Document) & source);

    Traits Of(const TDF_Label& label) const;

    /// Of all parts of a product's shape that the file says something of. What is said of a shell,
    /// a wire or a compound is handed down to solids, faces and edges that say nothing themselves
    /// (but for names).
    TraitsMap OfParts(const TDF_Label& product) const;

private:
    Handle(XCAFDoc_ShapeTool) _shapes;
    Handle(XCAFDoc_ColorTool) _colors;
    Handle(XCAFDoc_LayerTool) _layers;
};

}  // namespace kesview
