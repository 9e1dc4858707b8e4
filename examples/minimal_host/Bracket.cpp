#include "Bracket.h"

#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/math/VectorMath.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {

namespace {

using Point = std::array<double, 3>;

// Sixteen corners for a circle: a multiple of eight, so that four of the patches around a hole
// end exactly in the corners of the rectangle around it.
constexpr int kCorners = 16;

struct Circle {
    double u, v, radius;
};

struct Rectangle {
    double u0, v0, u1, v1;
};

/// A plane in space with coordinates u and v of its own.
struct Plane {
    Point origin, u, v;

    Point At(double atU, double atV) const {
        Point point = origin;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            point[axis] += atU * u[axis] + atV * v[axis];
        }
        return point;
    }
};

Plane horizontalAt(double z) {
    return {{0, 0, z}, {1, 0, 0}, {0, 1, 0}};
}

Plane uprightAt(double y) {
    return {{0, y, 0}, {1, 0, 0}, {0, 0, 1}};
}

Plane sideAt(double x) {
    return {{x, 0, 0}, {0, 1, 0}, {0, 0, 1}};
}

std::array<double, 2> direction(int corner, int corners) {
    const double angle = 2.0 * std::acos(-1.0) * corner / corners;
    return {std::cos(angle), std::sin(angle)};
}

Point onCircle(const Plane& plane, const Circle& circle, int corner, int corners = kCorners) {
    const auto [cosine, sine] = direction(corner, corners);
    return plane.At(circle.u + circle.radius * cosine, circle.v + circle.radius * sine);
}

/// Where the same corner of the circle lies on the rectangle around it.
Point onRectangle(const Plane& plane, const Rectangle& cell, const Circle& hole, int corner) {
    const auto [cosine, sine] = direction(corner, kCorners);
    const double longer = std::max(std::abs(cosine), std::abs(sine));
    const double s = cosine / longer;
    const double t = sine / longer;
    return plane.At(hole.u + s * (s > 0 ? cell.u1 - hole.u : hole.u - cell.u0),
                    hole.v + t * (t > 0 ? cell.v1 - hole.v : hole.v - cell.v0));
}

// --- faces --------------------------------------------------------------------------------------

void addPoint(std::vector<float>& points, const Point& point) {
    for (const double value : point) {
        points.push_back(static_cast<float>(value));
    }
}

void addQuad(Face& face, const std::array<Point, 4>& corners) {
    for (const Point& corner : corners) {
        face.quads.push_back(static_cast<int>(face.points.size() / 3));
        addPoint(face.points, corner);
    }
}

void addRectangle(Face& face, const Plane& plane, const Rectangle& r) {
    addQuad(face, {plane.At(r.u0, r.v0), plane.At(r.u1, r.v0), plane.At(r.u1, r.v1),
                   plane.At(r.u0, r.v1)});
}

/// A rectangle with a round hole in it: a ring of patches between the two outlines.
void addRectangleWithHole(Face& face, const Plane& plane, const Rectangle& cell,
                          const Circle& hole) {
    for (int corner = 0; corner < kCorners; ++corner) {
        addQuad(face, {onCircle(plane, hole, corner), onCircle(plane, hole, corner + 1),
                       onRectangle(plane, cell, hole, corner + 1),
                       onRectangle(plane, cell, hole, corner)});
    }
}

/// The wall between two outlines of the same shape in two planes.
void addWall(Face& face, const Plane& from, const Plane& to, const Circle& circle,
             int corners = kCorners) {
    for (int corner = 0; corner < corners; ++corner) {
        addQuad(
            face,
            {onCircle(from, circle, corner, corners), onCircle(from, circle, corner + 1, corners),
             onCircle(to, circle, corner + 1, corners), onCircle(to, circle, corner, corners)});
    }
}

/// A disk or, with six corners, a hexagon; the number of corners is even.
void addDisk(Face& face, const Plane& plane, const Circle& circle, int corners = kCorners) {
    for (int corner = 1; corner + 2 < corners; corner += 2) {
        addQuad(face,
                {onCircle(plane, circle, 0, corners), onCircle(plane, circle, corner, corners),
                 onCircle(plane, circle, corner + 1, corners),
                 onCircle(plane, circle, corner + 2, corners)});
    }
}

// --- edges --------------------------------------------------------------------------------------

Edge makeEdge(std::uint64_t id, std::wstring name, const std::vector<Point>& points) {
    Edge edge{id, std::move(name), {}};
    for (const Point& point : points) {
        addPoint(edge.points, point);
    }
    return edge;
}

Edge makeRim(std::uint64_t id, std::wstring name, const Plane& plane, const Circle& circle,
             int corners = kCorners) {
    std::vector<Point> points;
    for (int corner = 0; corner <= corners; ++corner) {
        points.push_back(onCircle(plane, circle, corner, corners));
    }
    return makeEdge(id, std::move(name), points);
}

// --- the bracket --------------------------------------------------------------------------------

// An L of 60 mm width: the base lies on z = 0, the upright stands at its back.
constexpr double kWidth = 60;
constexpr double kDepth = 40;
constexpr double kHeight = 46;
constexpr double kThickness = 6;
constexpr double kUprightFront = kDepth - kThickness;

constexpr Circle kLeftHole{15, 17, 6};     // u is x, v is y
constexpr Circle kRightHole{45, 17, 6};    // u is x, v is y
constexpr Circle kUprightHole{30, 26, 7};  // u is x, v is z
const KesVizCore::RGBAColor kWallColor(205, 127, 50, 255);

Face makeBaseFace(std::uint64_t id, std::wstring name, double z) {
    Face face{id, std::move(name), {}, {}, {}};
    const double middle = kWidth / 2;
    addRectangleWithHole(face, horizontalAt(z), {0, 0, middle, kUprightFront}, kLeftHole);
    addRectangleWithHole(face, horizontalAt(z), {middle, 0, kWidth, kUprightFront}, kRightHole);
    return face;
}

Face makeUprightFace(std::uint64_t id, std::wstring name, double y) {
    Face face{id, std::move(name), {}, {}, {}};
    addRectangleWithHole(face, uprightAt(y), {0, kThickness, kWidth, kHeight}, kUprightHole);
    return face;
}

Face makePlainFace(std::uint64_t id, std::wstring name, const Plane& plane, const Rectangle& r) {
    Face face{id, std::move(name), {}, {}, {}};
    addRectangle(face, plane, r);
    return face;
}

Face makeSideFace(std::uint64_t id, std::wstring name, double x) {
    Face face = makePlainFace(id, std::move(name), sideAt(x), {0, 0, kDepth, kThickness});
    addRectangle(face, sideAt(x), {kUprightFront, kThickness, kDepth, kHeight});
    return face;
}

Face makeHoleWall(std::uint64_t id, std::wstring name, const Plane& from, const Plane& to,
                  const Circle& hole) {
    Face face{id, std::move(name), {}, {}, kWallColor};
    addWall(face, from, to, hole);
    return face;
}

std::vector<Face> makeBracketFaces() {
    std::vector<Face> faces{
        makeBaseFace(11, L"Base top", kThickness),
        makeBaseFace(12, L"Underside", 0),
        makePlainFace(13, L"Base front", uprightAt(0), {0, 0, kWidth, kThickness}),
        makeUprightFace(14, L"Upright front", kUprightFront),
        makeUprightFace(15, L"Back", kDepth),
        makePlainFace(16, L"Upright top", horizontalAt(kHeight),
                      {0, kUprightFront, kWidth, kDepth}),
        makeSideFace(17, L"Left side", 0),
        makeSideFace(18, L"Right side", kWidth),
        makeHoleWall(21, L"Left hole", horizontalAt(0), horizontalAt(kThickness), kLeftHole),
        makeHoleWall(22, L"Right hole", horizontalAt(0), horizontalAt(kThickness), kRightHole),
        makeHoleWall(23, L"Upright hole", uprightAt(kUprightFront), uprightAt(kDepth),
                     kUprightHole)};
    // Underside and back reach beyond the patch around their holes, into the corner of the L.
    addRectangle(faces[1], horizontalAt(0), {0, kUprightFront, kWidth, kDepth});
    addRectangle(faces[4], uprightAt(kDepth), {0, 0, kWidth, kThickness});
    return faces;
}

std::vector<Edge> makeBracketEdges() {
    struct Corner {
        double y, z;
        const wchar_t* name;
    };
    const Corner profile[] = {{0, 0, L"Base front, below"},
                              {kDepth, 0, L"Back, below"},
                              {kDepth, kHeight, L"Back, above"},
                              {kUprightFront, kHeight, L"Upright front, above"},
                              {kUprightFront, kThickness, L"Inner corner"},
                              {0, kThickness, L"Base front, above"}};
    std::vector<Point> left;
    std::vector<Point> right;
    std::vector<Edge> along;
    for (const auto& [y, z, name] : profile) {
        left.push_back({0, y, z});
        right.push_back({kWidth, y, z});
        along.push_back(makeEdge(43 + along.size(), name, {left.back(), right.back()}));
    }
    left.push_back(left.front());
    right.push_back(right.front());
    std::vector<Edge> edges{
        makeEdge(41, L"Left outline", left), makeEdge(42, L"Right outline", right),
        makeRim(51, L"Rim of the left hole", horizontalAt(kThickness), kLeftHole),
        makeRim(52, L"Rim of the right hole", horizontalAt(kThickness), kRightHole),
        makeRim(53, L"Rim of the upright hole", uprightAt(kUprightFront), kUprightHole)};
    edges.insert(edges.begin() + 2, along.begin(), along.end());
    return edges;
}

// --- the bolt -----------------------------------------------------------------------------------

// It stands on z = 0 with the head above and the shank below.
Body makeBolt() {
    constexpr int hexagon = 6;
    constexpr Circle head{0, 0, 9};
    constexpr Circle shank{0, 0, 5};
    const Plane top = horizontalAt(5);
    const Plane seat = horizontalAt(0);
    const Plane tip = horizontalAt(-14);
    Body bolt{200, L"Hex bolt", KesVizCore::RGBAColor(96, 96, 104, 255), {}, {}};
    bolt.faces = {{31, L"Head", {}, {}, {}},
                  {32, L"Flats", {}, {}, {}},
                  {33, L"Seat", {}, {}, {}},
                  {34, L"Shank", {}, {}, {}},
                  {35, L"Tip", {}, {}, {}}};
    addDisk(bolt.faces[0], top, head, hexagon);
    addWall(bolt.faces[1], seat, top, head, hexagon);
    addDisk(bolt.faces[2], seat, head, hexagon);
    addWall(bolt.faces[3], tip, seat, shank);
    addDisk(bolt.faces[4], tip, shank);
    bolt.edges = {makeRim(61, L"Rim of the head", top, head, hexagon),
                  makeRim(62, L"Rim of the seat", seat, head, hexagon),
                  makeRim(63, L"Rim of the tip", tip, shank)};
    return bolt;
}

std::array<double, 16> identity() {
    std::array<double, 16> matrix{};
    KesVizCore::AttributeTransform::SetIdentity(matrix.data());
    return matrix;
}

std::array<double, 16> moved(std::array<double, 16> matrix, double x, double y, double z) {
    matrix[12] += x;
    matrix[13] += y;
    matrix[14] += z;
    return matrix;
}

/// A quarter turn about x: what pointed up points to the front.
std::array<double, 16> tippedToTheFront() {
    std::array<double, 16> matrix = identity();
    double axis[3] = {1, 0, 0};
    KesVizCore::CreateRotationMatrixDegrees(axis, 90.0, matrix.data());
    return matrix;
}

}  // namespace

const Body* Model::FindBody(std::uint64_t id) const {
    const auto found = std::find_if(bodies.begin(), bodies.end(),
                                    [id](const Body& body) { return body.id == id; });
    return found != bodies.end() ? &*found : nullptr;
}

const Instance* Model::FindInstance(std::uint64_t id) const {
    const auto found = std::find_if(instances.begin(), instances.end(),
                                    [id](const Instance& instance) { return instance.id == id; });
    return found != instances.end() ? &*found : nullptr;
}

Model makeBracketModel() {
    Model model;
    model.bodies.push_back({100, L"Bracket plate", KesVizCore::RGBAColor(70, 130, 180, 255),
                            makeBracketFaces(), makeBracketEdges()});
    model.bodies.push_back(makeBolt());
    model.instances = {
        {10, L"Bracket", 100, identity()},
        {20, L"Bolt in the base", 200, moved(identity(), kLeftHole.u, kLeftHole.v, kThickness)},
        {30, L"Bolt in the upright", 200,
         moved(tippedToTheFront(), kUprightHole.u, kUprightFront, kUprightHole.v)}};
    return model;
}

}  // namespace host
