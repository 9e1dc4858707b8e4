/// @file
/// See BrepFile.h.

#include "reading/occ/BrepFile.h"

#include "reading/occ/PartBodies.h"
#include "reading/occ/Progress.h"

#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BinTools.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Shape.hxx>
#include <array>
#include <filesystem>
#include <fstream>

namespace kesview {

namespace {

/// Looks at the start of the file and goes back to it.
bool isBinary(std::istream& file) {
    std::array<char, 64> start{};
    file.read(start.data(), start.size());
    const std::string text(start.data(), static_cast<std::size_t>(file.gcount()));
    file.clear();
    file.seekg(0);
    return text.find("Open CASCADE Topology") != std::string::npos;
}

TopoDS_Shape readShape(const std::string& path, const ReadProgress& progress) {
    std::ifstream file(path, std::ios::binary);
    TopoDS_Shape shape;
    const Handle(Progress) indicator = new Progress("reading", progress);
    try {
        if (isBinary(file)) {
            BinTools::Read(shape, file, indicator->Start());
        } else {
            BRepTools::Read(shape, file, BRep_Builder(), indicator->Start());
        }
    } catch (const Standard_Failure&) {
        shape.Nullify();
    }
    // Behind the end of a cut file the reader goes on with whatever its buffers held: now and
    // then that makes a shape, and only the stream tells.
    if (shape.IsNull() || file.fail()) {
        throw ReadError(ReadFailure::Damaged,
                        "The BREP file is damaged or incomplete: it holds no shape that can be "
                        "read; write or copy it anew.");
    }
    tellProgress(progress, "reading", 1);
    return shape;
}

}  // namespace

Document readBrepFile(const std::string& path, const ReadOptions& options,
                      const ReadProgress& progress) {
    const TopoDS_Shape shape = readShape(path, progress);
    Document document;
    document.format = "BREP";
    IdCounter ids;
    ShapeIndex index;
    Product product;
    product.id = ids.Next();
    product.name = std::filesystem::path(path).stem().string();
    Component root;
    root.id = ids.Next();
    root.name = product.name;
    document.roots.push_back(root);

    tellProgress(progress, "tessellating", 0);
    const ShapeNames names;
    Traits whole;
    whole.name = product.name;
    const TraitsMap parts;
    BodyBuilder builder({options, ids, index, names, document}, whole, parts);
    product.bodies = builder.Build(shape);
    document.products.push_back(std::move(product));
    tellProgress(progress, "tessellating", 1);
    tellIfWithoutShape(document);
    return document;
}

}  // namespace kesview
