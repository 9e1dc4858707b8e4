#pragma once

/// @file
/// What a CAD file says, as plain data: parts, where they stand, what is annotated on them, the
/// saved views, and what was lost in reading. It knows no reader and no library.

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kesview {

/// Every id of a document is unique in it, and 2 or more: 1 is the root of every scene.
using Id = std::uint64_t;

/// Red, green, blue, alpha; 255 is opaque.
using Color = std::array<std::uint8_t, 4>;

/// A 4 x 4 matrix, column-major, translation at 12..14, in millimetres.
using Matrix = std::array<double, 16>;
constexpr Matrix identityMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

using Vector = std::array<double, 3>;

/// A face of a body, in triangles. Points and normals are x, y, z triples, one normal for each
/// point or none at all; points are relative to the body's origin.
struct Face {
    Id id = 0;
    std::string name;  ///< UTF-8, as are all texts; empty where the file has none
    std::optional<Color> color;
    std::vector<float> points;
    std::vector<float> normals;
    std::vector<std::int32_t> triangles;  ///< three indices of points each
};

/// An edge of a body as a polyline.
struct Edge {
    Id id = 0;
    std::string name;
    std::optional<Color> color;
    std::vector<float> points;  ///< triples, relative to the body's origin
};

enum class BodyKind : std::int32_t {
    Solid,   ///< a closed volume
    Sheet,   ///< faces that enclose nothing, or not certainly
    Wire,    ///< edges alone
    Points,  ///< loose points alone
    Mesh     ///< triangles without an exact shape, as a mesh file holds
};

struct Body {
    Id id = 0;
    std::string name;
    BodyKind kind = BodyKind::Solid;
    std::optional<Color> color;
    bool hidden = false;
    /// In millimetres, in the product's frame. Zero but for bodies so far from their product's
    /// origin that single precision would blur them.
    Vector origin = {0, 0, 0};
    std::vector<Face> faces;
    std::vector<Edge> edges;
    std::vector<float> points;  ///< loose points, triples, relative to the origin
    std::vector<std::string> layers;
};

/// One use of a product in another, or at the top.
struct Component {
    Id id = 0;
    std::string name;           ///< of the instance; the product's where the file names none
    std::uint32_t product = 0;  ///< index into Document::products
    Matrix parentFromChild = identityMatrix;
    std::optional<Color>
        color;  ///< overrides the colour of the product and its bodies, not of faces
    bool hidden = false;
    std::vector<std::string> layers;
};

/// A part or an assembly, described once however often it is used.
struct Product {
    Id id = 0;
    std::string name;
    std::optional<Color> color;
    std::vector<std::string> layers;
    std::vector<Body> bodies;
    std::vector<Component> components;  ///< never leads back to this product
};

/// What an annotation speaks of.
struct EntityLink {
    enum class Kind : std::int32_t { Product, Body, Face, Edge, Vertex };
    Kind kind = Kind::Face;
    Id owner = 0;  ///< the body of a face or an edge; otherwise 0
    Id id = 0;
};

enum class AnnotationKind : std::int32_t {
    Dimension,
    Tolerance,
    Datum,
    DatumTarget,
    Note,
    SurfaceFinish,
    Weld,
    Other
};

/// Filled area of an annotation's drawing: triangles over points, in the world.
struct FilledArea {
    std::vector<float> points;
    std::vector<std::int32_t> triangles;
};

/// A text in space. @c u is the direction of writing, @c v points up the letters; length 1.
struct PlacedText {
    std::string text;             ///< lines are separated by a line feed
    Vector position = {0, 0, 0};  ///< the lower left corner of the first line
    Vector u = {1, 0, 0};
    Vector v = {0, 1, 0};
    double height = 1;  ///< of a capital letter, in millimetres
};

/// One annotation: what it means, how it is drawn, what it speaks of. Drawings stand in the world
/// (of the first instance where the annotated product is used more than once), in millimetres.
struct Annotation {
    Id id = 0;
    std::string key;  ///< unique in the document: how the file names it, "#4711"
    AnnotationKind kind = AnnotationKind::Other;
    std::string type;           ///< "linear distance", "position", "flatness", "datum", "note", …
    std::int32_t typeCode = 0;  ///< the reader's number of that type
    std::string name;           ///< as the file names its drawing; may be empty
    std::string label;          ///< of the semantic record; may be empty
    /// What a drawing would read, from the semantic values alone: "⌀ 5.5 ±0.1", "⌖ ⌀0.2 Ⓜ | A | B".
    std::string text;
    /// Semantic values by the keys that SemanticPMI prints ("Value", "UpperVal", "Tolerance Type",
    /// "DatumRefDatas", …), numbers in millimetres and radians.
    std::map<std::string, std::string> attributes;
    std::vector<EntityLink> links;
    std::vector<std::string> datums;  ///< keys of the datum annotations that it refers to, in order
    std::vector<std::vector<float>> lines;  ///< polylines, triples each
    std::vector<FilledArea> areas;
    std::vector<PlacedText> texts;
    /// Where a text can be drawn when the file holds no drawing: origin, u, v. None where unknown.
    std::optional<std::array<Vector, 3>> plane;
    std::optional<Color> color;
    bool hidden = false;
    bool semantic = false;     ///< the file says what it means, not only how it looks
    bool drawnInFile = false;  ///< the file holds a drawing, whether or not it could be read
};

/// A camera that the file saved, with the annotations that it shows.
struct SavedView {
    Id id = 0;
    std::string key;
    std::string name;
    Vector eye = {0, 0, 1};  ///< millimetres, in the world
    Vector target = {0, 0, 0};
    Vector up = {0, 1, 0};  ///< length 1
    bool perspective = false;
    double viewAngle = 0;  ///< degrees, vertical, of a perspective camera
    double width = 0;      ///< what is seen of the plane through the target; 0 where unknown
    double height = 0;
    struct Plane {
        Vector point = {0, 0, 0};
        Vector normal = {0, 0, 1};  ///< towards what is kept
    };
    std::optional<Plane> clipping;
    std::vector<std::string> members;  ///< keys of annotations; those it shows
    bool showsAll = false;             ///< the file names no members
};

/// Something that reading lost, changed or doubts.
struct Finding {
    enum class Severity : std::int32_t { Error, Warning, Note };
    Severity severity = Severity::Warning;
    std::string code;     ///< stable, for programs: "pmi.no-drawing", "shape.no-triangles"
    std::string message;  ///< one sentence for people
    std::string where;    ///< name or key of what is concerned; may be empty
    std::uint64_t count = 1;
};

struct Document {
    std::string format;  ///< "STEP", "IGES", "BREP", "STL"
    std::string schema;  ///< "AP242 edition 1" or as the file says; empty where there is none
    std::string unit;    ///< of length in the file: "millimetre", "inch"; empty where unknown
    double millimetresPerUnit = 1;
    std::string author;  ///< from the file's header, as are the next two; may be empty
    std::string originatingSystem;
    std::string timeStamp;
    std::vector<Product> products;
    std::vector<Component> roots;
    std::vector<Annotation> annotations;
    std::vector<SavedView> views;
    std::vector<Finding> findings;
};

}  // namespace kesview
