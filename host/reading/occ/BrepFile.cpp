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
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

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

/// A text ends with a line that names the whole shape, "+1 0", behind the star of the last part.
/// Behind the end of a cut text the reader would go on with whatever its buffers hold: it might
/// find a shape there, or never end.
bool isWhole(std::istream& text) {
    constexpr std::streamoff kEnough = 256;
    text.seekg(0, std::ios::end);
    text.seekg(std::max<std::streamoff>(0, text.tellg() - kEnough));
    const std::string end(std::istreambuf_iterator<char>(text), {});
    text.clear();
    text.seekg(0);
    static const std::regex pattern(R"([^]*\*\s*\n\s*[-+ie][0-9]+ [0-9]+\s*)");
    return std::regex_match(end, pattern);
}

TopoDS_Shape readShape(const std::string& path, const ReadProgress& progress) {
    std::ifstream file(path, std::ios::binary);
    TopoDS_Shape shape;
    const Handle(Progress) indicator = new Progress("reading", progress);
    try {
        if (isBinary(file)) {
            BinTools::Read(shape, file, indicator->Start());
        } else if (isWhole(file)) {
            BRepTools::Read(shape, file, BRep_Builder(), indicator->Start());
        }
    } catch (const Standard_Failure&) {
        shape.Nullify();
    }
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
