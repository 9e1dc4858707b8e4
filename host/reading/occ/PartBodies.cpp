/// @file
/// See PartBodies.h.

#include "reading/occ/PartBodies.h"

#include "reading/occ/Findings.h"
#include "reading/occ/Progress.h"

#include <BRepTools.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>

namespace kesview {

namespace {

/// Parts that the file splits off a product have no name of their own.
std::string nameFromBodies(const Product& product) {
    if (product.bodies.empty()) {
        return "empty";
    }
    if (!product.bodies.front().name.empty()) {
        return product.bodies.front().name;
    }
    switch (product.bodies.front().kind) {
        case BodyKind::Solid:
            return "solid";
        case BodyKind::Sheet:
            return "sheet";
        case BodyKind::Wire:
            return "wire";
        case BodyKind::Points:
            return "points";
        case BodyKind::Mesh:
            break;
    }
    return "mesh";
}

/// Components without a name take that of their product.
void nameComponents(std::vector<Component>& components, const Document& document) {
    for (Component& component : components) {
        if (component.name.empty()) {
            component.name = document.products[component.product].name;
        }
    }
}

void fillPart(const TraitsReader& traits, const Structure::Part& part, const BodyContext& context) {
    const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(part.label);
    if (shape.IsNull()) {
        return;
    }
    Product& product = context.document.products[part.product];
    const TraitsMap parts = traits.OfParts(part.label);
    const Traits whole = traits.Of(part.label);
    BodyBuilder builder(context, whole, parts);
    product.bodies = builder.Build(shape);
    if (product.name.empty()) {
        product.name = nameFromBodies(product);
    }
    context.index.Add(shape, {EntityLink::Kind::Product, 0, product.id});
    BRepTools::Clean(shape);  // the triangles live in the document now
}

}  // namespace

void fillBodies(const Handle(TDocStd_Document) & source, const Structure& structure,
                const BodyContext& context, const ReadProgress& progress) {
    const TraitsReader traits(source);
    double done = 0;
    for (const Structure::Part& part : structure.parts) {
        tellProgress(progress, "tessellating", done / static_cast<double>(structure.parts.size()));
        fillPart(traits, part, context);
        ++done;
    }
    for (Product& product : context.document.products) {
        nameComponents(product.components, context.document);
    }
    tellProgress(progress, "tessellating", 1);
    tellIfWithoutShape(context.document);
}

void tellIfWithoutShape(Document& document) {
    const bool hasBody =
        std::any_of(document.products.begin(), document.products.end(),
                    [](const Product& product) { return !product.bodies.empty(); });
    if (!hasBody) {
        addFinding(document, {Finding::Severity::Error, "shape.none",
                              "The file holds no shape that can be shown.", ""});
    }
}

}  // namespace kesview
