#pragma once

/// @file
/// Turns the shape of a product into bodies, faces and edges.

#include "document/Document.h"
#include "reading/ReadFile.h"
#include "reading/occ/IdCounter.h"
#include "reading/occ/ShapeIndex.h"
#include "reading/occ/StepNames.h"
#include "reading/occ/Traits.h"

#include <TopTools_MapOfShape.hxx>
#include <TopoDS_Shape.hxx>
#include <string>
#include <vector>

class TopoDS_Edge;
class TopoDS_Face;

namespace kesview {

/// What all products of a document share while their bodies are built. Everything outlives it.
struct BodyContext {
    const ReadOptions& options;
    IdCounter& ids;
    ShapeIndex& index;
    const ShapeNames& names;
    Document& document;  ///< findings go there
};

/// Builds the bodies of one product, in the order solids, shells, loose faces, loose edges, loose
/// points. Loose faces (edges, points) of the same layers and visibility make one body together.
/// A face or an edge is listed once a body, however many faces meet in it; edges without length,
/// at the pole of a sphere for one, are listed without points. Edges take the colour that the
/// file gives to the curves of what they belong to.
class BodyBuilder {
public:
    /// @p product is what the file says of the whole, @p traits what it says of parts; both outlive
    /// the builder.
    BodyBuilder(const BodyContext& context, const Traits& product, const TraitsMap& traits);

    std::vector<Body> Build(const TopoDS_Shape& shape);

private:
    Body makeBody(BodyKind kind, const TopoDS_Shape& shape);
    void addLoose(BodyKind kind, const TopoDS_Shape& shape, TopAbs_ShapeEnum wanted,
                  TopAbs_ShapeEnum inside, std::vector<Body>& bodies);
    void addFaces(const TopoDS_Shape& shape, Body& body);
    void fillPoints(const TopoDS_Face& shape, const Body& body, Face& face);
    void addEdges(const TopoDS_Shape& shape, Body& body);
    void addPoints(const TopoDS_Shape& shape, Body& body);
    Edge makeEdge(const TopoDS_Edge& shape, const TopoDS_Face& face, const Body& body);
    void fillPoints(const TopoDS_Edge& shape, const TopoDS_Face& face, const Body& body,
                    Edge& edge);
    Vector originOf(const TopoDS_Shape& shape) const;
    Traits traitsOf(const TopoDS_Shape& shape) const;
    void tellAbsurd();
    void tell(Finding::Severity severity, const std::string& code, const std::string& message,
              std::uint64_t count = 1);

    BodyContext _context;
    const TraitsMap& _traits;
    const Traits& _product;
    std::optional<Color> _curveColor;  ///< of the edges of the body being built
    TopTools_MapOfShape _absurd;
    double _deflection = 0;
};

}  // namespace kesview
