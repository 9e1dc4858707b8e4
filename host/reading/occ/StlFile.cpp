/// @file
/// See StlFile.h.

#include "reading/occ/StlFile.h"

#include "reading/occ/Findings.h"
#include "reading/occ/IdCounter.h"
#include "reading/occ/PartBodies.h"
#include "reading/occ/Progress.h"
#include "reading/occ/StlAscii.h"
#include "reading/occ/StlBinary.h"
#include "reading/occ/StlTriangles.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace kesview {

namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content(static_cast<std::size_t>(std::filesystem::file_size(path)), '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

bool startsWithSolid(const std::string& content) {
    const auto start = content.find_first_not_of(" \t\r\n");
    const std::string word = start == std::string::npos ? "" : content.substr(start, 5);
    return word == "solid" || word == "SOLID" || word == "Solid";
}

std::vector<StlSolid> solidsOfText(const std::string& content, Document& document) {
    StlText text = parseStlText(content);
    if (text.isTruncated) {
        addFinding(document, {Finding::Severity::Error, "file.truncated",
                              "The file ends within a solid; what stood behind is lost.", ""});
    }
    addFinding(document,
               {Finding::Severity::Error, "mesh.damaged-facet",
                "Facets without three corners of three numbers are left out.", ""},
               text.damagedFacets);
    return std::move(text.solids);
}

std::vector<StlSolid> solidsOf(const std::string& content, Document& document) {
    if (!isExactStlBinary(content) && startsWithSolid(content)) {
        return solidsOfText(content, document);
    }
    StlSolid solid = parseStlBinary(content);
    const std::uint64_t read = stlHeaderSize + stlTriangleSize * solid.triangles.size();
    addFinding(document,
               {Finding::Severity::Note, "file.trailing-bytes",
                "Bytes stand behind the last triangle; they are left out.", ""},
               content.size() - read);
    std::vector<StlSolid> solids;
    solids.push_back(std::move(solid));
    return solids;
}

Body makeBody(const StlSolid& solid, IdCounter& ids, const ReadOptions& options,
              Document& document) {
    Body body;
    body.id = ids.Next();
    body.name = solid.name;
    body.kind = BodyKind::Mesh;
    Face face;
    face.id = ids.Next();
    const StlLosses losses = fillFace(solid, face);
    if (!options.withTessellation) {
        face.points.clear();
        face.triangles.clear();
    }
    body.faces.push_back(std::move(face));
    addFinding(document,
               {Finding::Severity::Warning, "mesh.degenerate",
                "Triangles without area are left out.", solid.name},
               losses.degenerate);
    addFinding(document,
               {Finding::Severity::Error, "shape.absurd",
                "Triangles have coordinates that are no numbers or absurdly large; they are left "
                "out.",
                solid.name},
               losses.absurd);
    return body;
}

}  // namespace

Document readStlFile(const std::string& path, const ReadOptions& options,
                     const ReadProgress& progress) {
    Document document;
    document.format = "STL";
    tellProgress(progress, "reading", 0);
    const std::vector<StlSolid> solids = solidsOf(contentOf(path), document);
    tellProgress(progress, "reading", 1);

    IdCounter ids;
    Product product;
    product.id = ids.Next();
    product.name = std::filesystem::path(path).stem().string();
    Component root;
    root.id = ids.Next();
    root.name = product.name;
    for (const StlSolid& solid : solids) {
        if (!solid.triangles.empty()) {
            product.bodies.push_back(makeBody(solid, ids, options, document));
        }
    }
    document.products.push_back(std::move(product));
    document.roots.push_back(std::move(root));
    tellIfWithoutShape(document);
    return document;
}

}  // namespace kesview
