#include "view/MakePicture.h"

#include "loading/Load.h"
#include "view/Items.h"
#include "view/SceneAdapter.h"
#include "view/Vectors.h"

#include <KesVizCore/graph/AttributeLineStyle.h>

#include <cstddef>
#include <cstring>
#include <unordered_map>

namespace kesview {

namespace {

/// What makes two items go into different batches.
struct Look {
    Color color = {0, 0, 0, 255};
    float size = 0;  ///< width of lines, size of points
    Shape::Form form = Shape::Form::Triangles;
    bool annotation = false;
    bool flag = false;  ///< dashed lines, triangles with normals

    bool operator==(const Look& other) const {
        return color == other.color && size == other.size && form == other.form &&
               annotation == other.annotation && flag == other.flag;
    }
};

struct LookHash {
    std::size_t operator()(const Look& look) const {
        std::uint32_t color = 0;
        std::uint32_t size = 0;
        std::memcpy(&color, look.color.data(), sizeof color);
        std::memcpy(&size, &look.size, sizeof size);
        const std::uint64_t kind = static_cast<std::uint64_t>(look.form) * 4 +
                                   (look.annotation ? 2U : 0U) + (look.flag ? 1U : 0U);
        const std::uint64_t all = (static_cast<std::uint64_t>(size) << 32U | color) + 31 * kind;
        return static_cast<std::size_t>((all * 0x9E3779B97F4A7C15ULL) >> 16U);
    }
};

struct Batch {
    Look look;
    std::size_t points = 0;
    std::size_t parts = 0;  ///< triangles or polylines
};

struct Drawn {
    Shape shape;
    std::size_t batch;
    std::size_t place;
};

/// How points and normals of a place get into the picture.
struct Place {
    Matrix pictureFromLocal = identityMatrix;
    Matrix normals = identityMatrix;  ///< up to a positive factor
    bool mirrors = false;
};

Place placeOf(const Matrix& world, const Vector& origin) {
    Place place;
    place.pictureFromLocal = world;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        place.pictureFromLocal[12 + axis] -= origin[axis];
    }
    const Vector x = {world[0], world[1], world[2]};
    const Vector y = {world[4], world[5], world[6]};
    const Vector z = {world[8], world[9], world[10]};
    place.mirrors = dot(cross(x, y), z) < 0;
    const double sign = place.mirrors ? -1 : 1;
    const Vector columns[3] = {sign * cross(y, z), sign * cross(z, x), sign * cross(x, y)};
    for (std::size_t column = 0; column < 3; ++column) {
        std::copy(columns[column].begin(), columns[column].end(),
                  place.normals.begin() + static_cast<std::ptrdiff_t>(4 * column));
    }
    return place;
}

Look lookOf(const ShownWalk& walk, const Shape& shape) {
    Look look;
    look.color = walk.GetColor();
    look.form = shape.form;
    look.annotation = walk.IsAnnotation();
    if (shape.form == Shape::Form::Triangles) {
        look.flag = shape.normals != nullptr;
    } else if (shape.form == Shape::Form::Lines) {
        const auto& line = static_cast<const PolylineItem&>(walk.Item());
        look.size = line.GetThickness();
        look.flag = line.GetStipple() != 0;
        if (viz::AttributeLineStyle* const style = walk.LineStyle()) {
            const std::string& pattern = style->GetPattern();
            look.size = style->GetWeight();
            look.flag = !pattern.empty() && pattern != "solid" && pattern != "continuous";
        }
    } else if (const auto* cloud = dynamic_cast<const PointCloudItem*>(&walk.Item())) {
        look.size = static_cast<float>(cloud->GetPointSize());
    } else if (const auto* vertex = dynamic_cast<const VertexItem*>(&walk.Item())) {
        look.size = static_cast<float>(vertex->GetPointSize());
    }
    return look;
}

class PictureMaker {
public:
    explicit PictureMaker(Picture& picture) : _picture(picture) {}

    void Collect(ShownWalk walk);
    /// Puts the origin into the middle of all that was collected.
    void SetOrigin();
    void Fill();

private:
    void collectItem(const ShownWalk& walk);
    void addText(const TextItem& text, const ShownWalk& walk);
    std::size_t batchOf(const Look& look);
    void makeBatches();
    void fill(const Drawn& drawn);
    void fillTriangles(const Shape& shape, const Place& place, TriangleBatch& batch);

    Picture& _picture;
    std::unordered_map<Look, std::size_t, LookHash> _batchOf;
    std::vector<Batch> _batches;
    std::vector<Drawn> _drawn;
    std::vector<Matrix> _worlds;  ///< of each place
    std::vector<Place> _places;
    Box _textBox;
    std::size_t _lastPlace = static_cast<std::size_t>(-1);
    std::vector<std::vector<float>*> _points;  ///< for each batch, where its points go
    std::vector<TriangleBatch*> _triangles;    ///< for each batch, or null
    std::vector<LineBatch*> _lines;
};

// --- first all items, to know how much room they take
// ---------------------------------------------

std::size_t PictureMaker::batchOf(const Look& look) {
    const auto [found, isNew] = _batchOf.try_emplace(look, _batches.size());
    if (isNew) {
        _batches.push_back({look, 0, 0});
    }
    return found->second;
}

void PictureMaker::Collect(ShownWalk walk) {
    while (walk.Next()) {
        if (walk.PlaceNumber() != _lastPlace) {
            _lastPlace = walk.PlaceNumber();
            _worlds.push_back(walk.WorldFromLocal());
        }
        collectItem(walk);
    }
}

void PictureMaker::collectItem(const ShownWalk& walk) {
    const Shape shape = shapeOf(walk.Item());
    if (shape.form == Shape::Form::Text) {
        addText(static_cast<const TextItem&>(walk.Item()), walk);
        return;
    }
    const int fewest = shape.form == Shape::Form::Lines ? 2 : 1;
    if (shape.pointCount < fewest) {
        return;
    }
    const std::size_t number = batchOf(lookOf(walk, shape));
    Batch& batch = _batches[number];
    batch.points += static_cast<std::size_t>(shape.pointCount);
    batch.parts +=
        shape.form == Shape::Form::Triangles ? static_cast<std::size_t>(shape.TriangleCount()) : 1;
    _drawn.push_back({shape, number, _worlds.size() - 1});
}

void PictureMaker::addText(const TextItem& text, const ShownWalk& walk) {
    const Matrix& world = walk.WorldFromLocal();
    const Vector u = transformDirection(world, {1, 0, 0});
    const Vector v = transformDirection(world, {0, 1, 0});
    PictureText drawn;
    drawn.color = walk.GetColor();
    drawn.placed.text = narrow(text.Text());
    drawn.placed.position = transformPoint(world, text.Position());
    drawn.placed.u = unit(u);
    drawn.placed.v = unit(v);
    drawn.placed.height = static_cast<double>(text.Height()) * lengthOf(v);
    _picture.texts.push_back(drawn);
    addToBox(text.GetShape(), world, _textBox);
}

void PictureMaker::SetOrigin() {
    Box box = _textBox;
    for (const Drawn& drawn : _drawn) {
        addToBox(drawn.shape, _worlds[drawn.place], box);
    }
    _picture.origin = box.IsEmpty() ? Vector{0, 0, 0} : box.Center();
    for (PictureText& text : _picture.texts) {
        text.placed.position = text.placed.position - _picture.origin;
    }
    for (const Matrix& world : _worlds) {
        _places.push_back(placeOf(world, _picture.origin));
    }
}

// --- then the batches
// -----------------------------------------------------------------------------

void PictureMaker::makeBatches() {
    std::size_t counts[2][3] = {};
    const auto countFor = [&](const Look& look) -> std::size_t& {
        return counts[look.annotation && look.form != Shape::Form::Points ? 1 : 0]
                     [static_cast<std::size_t>(look.form)];
    };
    for (const Batch& batch : _batches) {
        ++countFor(batch.look);
    }
    // Room first, so that pointers into the lists stay good.
    _picture.triangles.reserve(_picture.triangles.size() + counts[0][0]);
    _picture.lines.reserve(_picture.lines.size() + counts[0][1]);
    _picture.points.reserve(_picture.points.size() + counts[0][2]);
    _picture.annotationTriangles.reserve(_picture.annotationTriangles.size() + counts[1][0]);
    _picture.annotationLines.reserve(_picture.annotationLines.size() + counts[1][1]);
    for (const Batch& batch : _batches) {
        const Look& look = batch.look;
        _triangles.push_back(nullptr);
        _lines.push_back(nullptr);
        if (look.form == Shape::Form::Triangles) {
            auto& list = look.annotation ? _picture.annotationTriangles : _picture.triangles;
            list.emplace_back();
            TriangleBatch& made = list.back();
            made.color = look.color;
            made.lit = !look.annotation;
            made.normals.reserve(look.flag ? 3 * batch.points : 0);
            made.triangles.reserve(3 * batch.parts);
            _triangles.back() = &made;
            _points.push_back(&made.points);
        } else if (look.form == Shape::Form::Lines) {
            auto& list = look.annotation ? _picture.annotationLines : _picture.lines;
            list.push_back({look.color, look.size, look.flag, {}, {}});
            list.back().starts.reserve(batch.parts);
            _lines.back() = &list.back();
            _points.push_back(&list.back().points);
        } else {
            _picture.points.push_back({look.color, look.size, {}});
            _points.push_back(&_picture.points.back().points);
        }
        _points.back()->reserve(3 * batch.points);
    }
}

/// Writes @p count triples transformed by @p matrix behind those in @p out.
void appendPoints(const float* points, int count, const Matrix& matrix, std::vector<float>& out) {
    const std::size_t begin = out.size();
    out.resize(begin + 3 * static_cast<std::size_t>(count));
    float* to = out.data() + begin;
    for (const float* end = points + 3 * static_cast<std::ptrdiff_t>(count); points != end;
         points += 3, to += 3) {
        const Vector moved = transformPoint(matrix, points);
        to[0] = static_cast<float>(moved[0]);
        to[1] = static_cast<float>(moved[1]);
        to[2] = static_cast<float>(moved[2]);
    }
}

void appendNormals(const float* normals, int count, const Matrix& matrix, std::vector<float>& out) {
    for (const float* end = normals + 3 * static_cast<std::ptrdiff_t>(count); normals != end;
         normals += 3) {
        const Vector turned =
            unit(transformDirection(matrix, {normals[0], normals[1], normals[2]}));
        for (const double value : turned) {
            out.push_back(static_cast<float>(value));
        }
    }
}

void PictureMaker::fillTriangles(const Shape& shape, const Place& place, TriangleBatch& batch) {
    const auto first = static_cast<std::uint32_t>(batch.points.size() / 3);
    if (shape.normals != nullptr) {
        appendNormals(shape.normals, shape.pointCount, place.normals, batch.normals);
    }
    const int count = shape.TriangleCount();
    for (int number = 0; number < count; ++number) {
        const std::array<int, 3> corners = shape.Triangle(number);
        const std::size_t second = place.mirrors ? 2 : 1;
        for (const int corner : {corners[0], corners[second], corners[3 - second]}) {
            batch.triangles.push_back(first + static_cast<std::uint32_t>(corner));
        }
    }
}

void PictureMaker::fill(const Drawn& drawn) {
    const Place& place = _places[drawn.place];
    if (TriangleBatch* const triangles = _triangles[drawn.batch]) {
        fillTriangles(drawn.shape, place, *triangles);
    } else if (LineBatch* const lines = _lines[drawn.batch]) {
        lines->starts.push_back(static_cast<std::uint32_t>(lines->points.size() / 3));
    }
    appendPoints(drawn.shape.points, drawn.shape.pointCount, place.pictureFromLocal,
                 *_points[drawn.batch]);
}

void PictureMaker::Fill() {
    makeBatches();
    for (const Drawn& drawn : _drawn) {
        fill(drawn);
    }
}

}  // namespace

void addScene(const SceneAdapter& scene, Picture& picture) {
    PictureMaker maker(picture);
    maker.Collect(scene.Walk());
    maker.SetOrigin();
    maker.Fill();
}

}  // namespace kesview
