/// @file
/// See Structure.h.

#include "reading/occ/Structure.h"

#include "reading/occ/Findings.h"
#include "reading/occ/Traits.h"

#include <TDF_AttributeSequence.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDF_Tool.hxx>
#include <TDocStd_Document.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GraphNode.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Trsf.hxx>
#include <set>
#include <utility>

namespace kesview {

namespace {

Matrix matrixOf(const gp_Trsf& trsf) {
    Matrix matrix = identityMatrix;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            matrix[static_cast<std::size_t>(column * 4 + row)] = trsf.Value(row + 1, column + 1);
        }
    }
    return matrix;
}

std::string entryOf(const TDF_Label& label) {
    TCollection_AsciiString entry;
    TDF_Tool::Entry(label, entry);
    return entry.ToCString();
}

class TreeReader {
public:
    TreeReader(const Handle(TDocStd_Document) & source, IdCounter& ids, Document& document)
        : _traits(source), _ids(ids), _document(document) {}

    void AddRoot(const TDF_Label& label, const std::string& name) {
        const std::uint32_t product = productOf(label);
        if (_document.products[product].name.empty()) {
            _document.products[product].name = name;
        }
        Component root;
        root.id = _ids.Next();
        root.name = _document.products[product].name;
        root.product = product;
        root.hidden = _traits.Of(label).hidden;
        _document.roots.push_back(std::move(root));
    }

    Structure Take() { return std::move(_structure); }

private:
    std::uint32_t productOf(const TDF_Label& label) {
        const std::string entry = entryOf(label);
        const auto known = _structure.productOfEntry.find(entry);
        if (known != _structure.productOfEntry.end()) {
            return known->second;
        }
        const auto index = static_cast<std::uint32_t>(_document.products.size());
        _structure.productOfEntry.emplace(entry, index);
        _document.products.emplace_back();
        Product product;
        product.id = _ids.Next();
        const Traits traits = _traits.Of(label);
        product.name = traits.name;
        product.color = traits.color;
        product.layers = traits.layers;
        _open.insert(index);
        if (XCAFDoc_ShapeTool::IsAssembly(label)) {
            addComponents(label, product);
        } else {
            _structure.parts.push_back({index, label});
        }
        _open.erase(index);
        _document.products[index] = std::move(product);
        return index;
    }

    void addComponents(const TDF_Label& assembly, Product& product) {
        TDF_LabelSequence labels;
        XCAFDoc_ShapeTool::GetComponents(assembly, labels);
        for (const TDF_Label& label : labels) {
            TDF_Label referred;
            if (!XCAFDoc_ShapeTool::GetReferredShape(label, referred)) {
                addFinding(_document, {Finding::Severity::Error, "component.no-product",
                                       "Components of an assembly refer to no product; they are "
                                       "left out.",
                                       product.name});
                continue;
            }
            addComponent(label, referred, product);
        }
    }

    void addComponent(const TDF_Label& label, const TDF_Label& referred, Product& product) {
        const std::uint32_t child = productOf(referred);
        if (_open.count(child) != 0) {
            addFinding(_document,
                       {Finding::Severity::Error, "component.cycle",
                        "Assemblies contain themselves; these uses are left out.", product.name});
            return;
        }
        const Traits traits = _traits.Of(label);
        Component component;
        component.id = _ids.Next();
        component.name = traits.name;
        component.product = child;
        component.parentFromChild =
            matrixOf(XCAFDoc_ShapeTool::GetLocation(label).Transformation());
        component.color = traits.color ? traits.color : traits.curveColor;
        component.hidden = traits.hidden || _traits.Of(referred).hidden;
        component.layers = traits.layers;
        product.components.push_back(std::move(component));
        tellNestedOverrides(label);
    }

    /// A style of one instance deep in one use of an assembly has no place in a product that is
    /// described once.
    void tellNestedOverrides(const TDF_Label& component) {
        TDF_AttributeSequence usages;
        XCAFDoc_ShapeTool::GetAllComponentSHUO(component, usages);
        std::uint64_t styled = 0;
        for (const Handle(TDF_Attribute) & usage : usages) {
            const Traits traits = _traits.Of(usage->Label());
            styled += traits.color || traits.hidden ? 1U : 0U;
        }
        addFinding(_document,
                   {Finding::Severity::Note, "colour.nested-instance",
                    "Colours or visibility of single instances within an assembly that is used "
                    "more than once are left out.",
                    _traits.Of(component).name},
                   styled);
    }

    TraitsReader _traits;
    IdCounter& _ids;
    Document& _document;
    Structure _structure;
    std::set<std::uint32_t> _open;  ///< products whose components are being read
};

}  // namespace

Structure readStructure(const Handle(TDocStd_Document) & source, const std::string& rootName,
                        IdCounter& ids, Document& document) {
    TreeReader reader(source, ids, document);
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(source->Main())->GetFreeShapes(roots);
    for (const TDF_Label& root : roots) {
        reader.AddRoot(root, rootName);
    }
    return reader.Take();
}

}  // namespace kesview
