/// @file
/// See Traits.h.

#include "reading/occ/Traits.h"

#include "reading/occ/Colours.h"
#include "reading/occ/Text.h"

#include <TDF_Label.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <utility>

namespace kesview {

namespace {

std::string nameOfLabel(const TDF_Label& label) {
    Handle(TDataStd_Name) name;
    return label.FindAttribute(TDataStd_Name::GetID(), name) ? textOf(name->Get()) : std::string();
}

bool isGroup(const TopoDS_Shape& shape) {
    switch (shape.ShapeType()) {
        case TopAbs_COMPOUND:
        case TopAbs_COMPSOLID:
        case TopAbs_SHELL:
        case TopAbs_WIRE:
            return true;
        default:
            return false;
    }
}

void handDown(const TopoDS_Shape& group, const Traits& traits, TopAbs_ShapeEnum wanted,
              TopAbs_ShapeEnum inside, TraitsMap& map) {
    for (TopExp_Explorer parts(group, wanted, inside); parts.More(); parts.Next()) {
        if (!map.IsBound(parts.Current())) {
            map.Bind(parts.Current(), traits);
        }
    }
}

void handDown(const TopoDS_Shape& group, Traits traits, TraitsMap& map) {
    traits.name.clear();
    handDown(group, traits, TopAbs_SOLID, TopAbs_SHAPE, map);
    handDown(group, traits, TopAbs_FACE, TopAbs_SOLID, map);
    handDown(group, traits, TopAbs_EDGE, TopAbs_FACE, map);
}

}  // namespace

TraitsReader::TraitsReader(const Handle(TDocStd_Document) & source)
    : _shapes(XCAFDoc_DocumentTool::ShapeTool(source->Main())),
      _colors(XCAFDoc_DocumentTool::ColorTool(source->Main())),
      _layers(XCAFDoc_DocumentTool::LayerTool(source->Main())) {}

Traits TraitsReader::Of(const TDF_Label& label) const {
    Traits traits;
    traits.name = nameOfLabel(label);
    traits.color = surfaceColor(_colors, label);
    traits.curveColor = curveColor(_colors, label);
    traits.hidden = !_colors->IsVisible(label);

    TDF_LabelSequence layers;
    _layers->GetLayers(label, layers);
    for (const TDF_Label& layer : layers) {
        TCollection_ExtendedString name;
        if (_layers->GetLayer(layer, name)) {
            traits.layers.push_back(textOf(name));
        }
        traits.hidden = traits.hidden || !_layers->IsVisible(layer);
    }
    return traits;
}

TraitsMap TraitsReader::OfParts(const TDF_Label& product) const {
    TDF_LabelSequence parts;
    XCAFDoc_ShapeTool::GetSubShapes(product, parts);
    TraitsMap map;
    std::vector<std::pair<TopoDS_Shape, Traits>> groups;
    for (const TDF_Label& part : parts) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(part);
        if (shape.IsNull()) {
            continue;
        }
        Traits traits = Of(part);
        if (isGroup(shape)) {
            groups.emplace_back(shape, traits);
        }
        map.Bind(shape, std::move(traits));
    }
    // the innermost group says most: shells and wires before what holds them
    std::stable_sort(groups.begin(), groups.end(), [](const auto& a, const auto& b) {
        return a.first.ShapeType() > b.first.ShapeType();
    });
    for (const auto& [shape, traits] : groups) {
        handDown(shape, traits, map);
    }
    return map;
}

}  // namespace kesview
