#include "picking/PickIndex.h"

#include "picking/PickUnits.h"
#include "picking/RayTests.h"
#include "view/SceneAdapter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <embree3/rtcore.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kesview {

namespace {

// Embree works in single precision. Relative to the size of the scene, this is more than what
// coordinates, transforms and rays lose by that together.
constexpr double kRounding = 1e-5;
constexpr double kTightestFit = 64;  // times too large, boxes for the aperture are made anew

struct DeviceRelease {
    void operator()(RTCDevice device) const { rtcReleaseDevice(device); }
};
struct SceneRelease {
    void operator()(RTCScene scene) const { rtcReleaseScene(scene); }
};
using Device = std::unique_ptr<std::remove_pointer_t<RTCDevice>, DeviceRelease>;
using Scene = std::unique_ptr<std::remove_pointer_t<RTCScene>, SceneRelease>;

bool isKept(const std::optional<SavedView::Plane>& plane, const Vector& point) {
    return !plane || dot(point - plane->point, plane->normal) >= 0;
}

Vector pointOf(const Shape& shape, int index) {
    const float* const point = shape.points + 3 * static_cast<std::ptrdiff_t>(index);
    return {point[0], point[1], point[2]};
}

/// The norm of the inverse of the linear part: no less than how much smaller it makes anything.
/// Not finite where there is no inverse.
double shrinkingOf(const Matrix& m) {
    const Vector x = {m[0], m[1], m[2]};
    const Vector y = {m[4], m[5], m[6]};
    const Vector z = {m[8], m[9], m[10]};
    const double volume = std::abs(dot(cross(x, y), z));
    const Vector rows[3] = {cross(y, z), cross(z, x), cross(x, y)};
    return std::sqrt(dot(rows[0], rows[0]) + dot(rows[1], rows[1]) + dot(rows[2], rows[2])) /
           volume;
}

enum class Sort { Surfaces, Thin };

const std::vector<Primitive>& primitivesOf(const Unit& unit, Sort sort) {
    return sort == Sort::Surfaces ? unit.surfaces : unit.thin;
}

/// What Embree's callbacks get to know of a unit.
struct UnitGeometry {
    const Unit* unit = nullptr;
    Sort sort = Sort::Surfaces;
    double growth = 0;  ///< of the boxes, in the unit's own coordinates
};

/// The nearest so far, and by what it is found.
struct Candidate {
    double distance = HUGE_VAL;
    Vector point = {0, 0, 0};
    std::size_t place = 0;
    unsigned primitive = 0;
    bool found = false;

    bool IsBefore(const Candidate& other) const {
        return std::make_tuple(distance, place, primitive) <
               std::make_tuple(other.distance, other.place, other.primitive);
    }
};

/// One ray under way. Embree hands its context back to the callbacks, so that it comes first.
struct Query {
    RTCIntersectContext context;
    const PickUnits* units = nullptr;
    const SceneAdapter* scene = nullptr;
    const TestRay* ray = nullptr;
    Sort sort = Sort::Surfaces;
    double start = 0;  ///< where the ray that Embree gets begins, along the ray
    double slack = 0;
    double farthest = HUGE_VAL;
    Candidate best;

    float Limit() const {
        const double limit = std::min(best.distance, farthest);
        return std::isinf(limit) ? std::numeric_limits<float>::infinity()
                                 : static_cast<float>(limit - start + slack);
    }
};

// --- what is known of a primitive ---------------------------------------------------------------

viz::EntityType typeOf(const PlacedUnit& place, const Unit& unit, const UnitItem& item) {
    const viz::EntityType own = unit.nodes[item.node].type;
    return own != viz::InvalidType ? own : place.type;
}

/// From the root to the item's node.
std::vector<const viz::GeoNode*> chainOf(const PlacedUnit& place, const Unit& unit,
                                         const UnitItem& item) {
    std::vector<const viz::GeoNode*> chain = place.above;
    const auto top = static_cast<std::ptrdiff_t>(chain.size());
    for (auto at = static_cast<std::int32_t>(item.node); at >= 0;) {
        const UnitNode& node = unit.nodes[static_cast<std::size_t>(at)];
        chain.push_back(node.node);
        at = node.above;
    }
    std::reverse(chain.begin() + top, chain.end());
    return chain;
}

bool isShown(const Showing& showing, const PlacedUnit& place, const Unit& unit,
             const UnitItem& item) {
    if (!item.item->IsVisible()) {
        return false;
    }
    ShowState state = showing.Begin();
    for (const viz::GeoNode* node : chainOf(place, unit, item)) {
        if (!showing.Enter(*node, state)) {
            return false;
        }
    }
    return state.ShowsItems();
}

bool isCutAway(const Query& query, const Vector& point, viz::EntityType type) {
    const bool isExempt = isAnnotation(type) && !query.scene->ClipsAnnotations();
    return !isExempt && !isKept(query.scene->GetClipping(), point);
}

std::optional<RayHit> hitPrimitive(const TestRay& ray, const Matrix& world, const Shape& shape,
                                   std::uint32_t number) {
    const Corners corners = cornersOf(shape, number);
    std::array<Vector, 3> points{};
    for (int corner = 0; corner < corners.count; ++corner) {
        points[static_cast<std::size_t>(corner)] =
            transformPoint(world, pointOf(shape, corners.at[corner]));
    }
    switch (corners.count) {
        case 3:
            return hitTriangle(ray, points[0], points[1], points[2]);
        case 2:
            return hitSegment(ray, points[0], points[1]);
        default:
            return hitPoint(ray, points[0]);
    }
}

/// Tests one primitive, and keeps it where it is the nearest so far.
void consider(Query& query, std::size_t placeNumber, unsigned primitiveNumber) {
    const PlacedUnit& place = query.units->places[placeNumber];
    const Unit& unit = query.units->units[place.unit];
    const Primitive& primitive = primitivesOf(unit, query.sort)[primitiveNumber];
    const UnitItem& item = unit.items[primitive.item];
    const std::optional<RayHit> hit =
        hitPrimitive(*query.ray, place.world, item.shape, primitive.number);
    if (!hit || hit->distance > query.farthest) {
        return;
    }
    const Candidate candidate = {hit->distance, hit->point, placeNumber, primitiveNumber, true};
    if (!candidate.IsBefore(query.best) ||
        isCutAway(query, hit->point, typeOf(place, unit, item)) ||
        !isShown(query.scene->GetShowing(), place, unit, item)) {
        return;
    }
    query.best = candidate;
}

// --- Embree's callbacks -------------------------------------------------------------------------

void boundsOf(const RTCBoundsFunctionArguments* arguments) {
    const auto& geometry = *static_cast<const UnitGeometry*>(arguments->geometryUserPtr);
    const Primitive& primitive = primitivesOf(*geometry.unit, geometry.sort)[arguments->primID];
    const Shape& shape = geometry.unit->items[primitive.item].shape;
    const Corners corners = cornersOf(shape, primitive.number);
    const Vector center = geometry.unit->box.Center();
    Box box;
    for (int corner = 0; corner < corners.count; ++corner) {
        box.Add(pointOf(shape, corners.at[corner]) - center);
    }
    const Vector growth = {geometry.growth, geometry.growth, geometry.growth};
    const Vector low = box.low - growth;
    const Vector high = box.high + growth;
    RTCBounds& bounds = *arguments->bounds_o;
    bounds.lower_x = static_cast<float>(low[0]);
    bounds.lower_y = static_cast<float>(low[1]);
    bounds.lower_z = static_cast<float>(low[2]);
    bounds.upper_x = static_cast<float>(high[0]);
    bounds.upper_y = static_cast<float>(high[1]);
    bounds.upper_z = static_cast<float>(high[2]);
}

void intersect(const RTCIntersectFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) {
        return;
    }
    auto& query = *reinterpret_cast<Query*>(arguments->context);
    consider(query, arguments->context->instID[0], arguments->primID);
    // Only how far to look is told; what was hit the query knows.
    RTCRayN* const ray = RTCRayHitN_RayN(arguments->rayhit, arguments->N);
    float& limit = RTCRayN_tfar(ray, arguments->N, 0);
    limit = std::min(limit, query.Limit());
}

}  // namespace

// --- the scenes of Embree -----------------------------------------------------------------------

class PickIndex::Scenes {
public:
    explicit Scenes(const viz::Node& root);

    std::optional<PickHit> Pick(const SceneAdapter& scene, const PickRay& ray);

private:
    void build(Sort sort, double aperture);
    Scene makeScene() const;
    Scene sceneOf(UnitGeometry& geometry) const;
    void attach(RTCScene top, RTCScene unit, const PlacedUnit& place, unsigned number) const;
    void findBest(Query& query, RTCScene top) const;
    void check() const;
    PickHit hitOf(const Query& query) const;

    PickUnits _units;
    std::vector<double> _shrinking;  ///< for each unit, the most that one of its places does
    Vector _center = {0, 0, 0};
    double _diagonal = 0;
    Device _device;
    std::vector<UnitGeometry> _geometries[2];  ///< for each unit; Embree points to them
    Scene _top[2];
    double _apertureOfBoxes = -1;
};

PickIndex::Scenes::Scenes(const viz::Node& root)
    : _units(divideIntoUnits(root)), _device(rtcNewDevice(nullptr)) {
    if (_device == nullptr) {
        throw std::runtime_error("The picking index cannot be made: Embree does not start.");
    }
    _shrinking.assign(_units.units.size(), 0);
    Box box;
    for (const PlacedUnit& place : _units.places) {
        const Box& own = _units.units[place.unit].box;
        for (unsigned corner = 0; corner < 8 && !own.IsEmpty(); ++corner) {
            box.Add(
                transformPoint(place.world, Vector{(corner & 1U) != 0 ? own.high[0] : own.low[0],
                                                   (corner & 2U) != 0 ? own.high[1] : own.low[1],
                                                   (corner & 4U) != 0 ? own.high[2] : own.low[2]}));
        }
        const double shrinking = shrinkingOf(place.world);
        if (std::isfinite(shrinking)) {
            _shrinking[place.unit] = std::max(_shrinking[place.unit], shrinking);
        }
    }
    _center = box.IsEmpty() ? _center : box.Center();
    _diagonal = box.Diagonal();
    build(Sort::Surfaces, 0);
}

void PickIndex::Scenes::check() const {
    const RTCError error = rtcGetDeviceError(_device.get());
    if (error != RTC_ERROR_NONE) {
        throw std::runtime_error("The picking index cannot be made: Embree reports error " +
                                 std::to_string(static_cast<int>(error)) + ".");
    }
}

Scene PickIndex::Scenes::makeScene() const {
    Scene scene(rtcNewScene(_device.get()));
    check();
    rtcSetSceneFlags(scene.get(), RTC_SCENE_FLAG_ROBUST);
    return scene;
}

Scene PickIndex::Scenes::sceneOf(UnitGeometry& geometry) const {
    Scene scene = makeScene();
    // Halves what the first pick waits for; later picks were not seen to take longer.
    rtcSetSceneBuildQuality(scene.get(), RTC_BUILD_QUALITY_LOW);
    RTCGeometry made = rtcNewGeometry(_device.get(), RTC_GEOMETRY_TYPE_USER);
    const std::size_t count = primitivesOf(*geometry.unit, geometry.sort).size();
    rtcSetGeometryUserPrimitiveCount(made, static_cast<unsigned>(count));
    rtcSetGeometryUserData(made, &geometry);
    rtcSetGeometryBoundsFunction(
        made, [](const RTCBoundsFunctionArguments* arguments) { boundsOf(arguments); }, nullptr);
    rtcSetGeometryIntersectFunction(made, intersect);
    rtcCommitGeometry(made);
    rtcAttachGeometry(scene.get(), made);
    rtcReleaseGeometry(made);  // the scene keeps it
    rtcCommitScene(scene.get());
    check();
    return scene;
}

void PickIndex::Scenes::attach(RTCScene top, RTCScene unit, const PlacedUnit& place,
                               unsigned number) const {
    const Vector center = transformPoint(place.world, _units.units[place.unit].box.Center());
    const Vector moved = center - _center;
    std::array<float, 12> columns{};
    for (std::size_t column = 0; column < 3; ++column) {
        for (std::size_t row = 0; row < 3; ++row) {
            columns[3 * column + row] = static_cast<float>(place.world[4 * column + row]);
        }
    }
    std::transform(moved.begin(), moved.end(), columns.begin() + 9,
                   [](double value) { return static_cast<float>(value); });
    RTCGeometry instance = rtcNewGeometry(_device.get(), RTC_GEOMETRY_TYPE_INSTANCE);
    rtcSetGeometryInstancedScene(instance, unit);
    rtcSetGeometryTransform(instance, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns.data());
    rtcCommitGeometry(instance);
    rtcAttachGeometryByID(top, instance, number);
    rtcReleaseGeometry(instance);
}

void PickIndex::Scenes::build(Sort sort, double aperture) {
    const auto side = static_cast<std::size_t>(sort);
    _top[side].reset();
    std::vector<UnitGeometry>& geometries = _geometries[side];
    geometries.assign(_units.units.size(), UnitGeometry());
    std::vector<Scene> scenes(_units.units.size());  // the instances keep them
    for (std::size_t number = 0; number < geometries.size(); ++number) {
        const Unit& unit = _units.units[number];
        if (primitivesOf(unit, sort).empty()) {
            continue;
        }
        const double growth = _shrinking[number] * (kRounding * _diagonal + aperture) +
                              kRounding * unit.box.Diagonal();
        geometries[number] = {&unit, sort, growth};
        scenes[number] = sceneOf(geometries[number]);
    }
    Scene top = makeScene();
    for (std::size_t number = 0; number < _units.places.size(); ++number) {
        const PlacedUnit& place = _units.places[number];
        if (scenes[place.unit] != nullptr && std::isfinite(shrinkingOf(place.world))) {
            attach(top.get(), scenes[place.unit].get(), place, static_cast<unsigned>(number));
        }
    }
    rtcCommitScene(top.get());
    check();
    _top[side] = std::move(top);
}

// --- asking them --------------------------------------------------------------------------------

void PickIndex::Scenes::findBest(Query& query, RTCScene top) const {
    const TestRay& ray = *query.ray;
    // The ray begins before the scene, and not at an eye far away, to lose as little as can be.
    const double middle = dot(_center - ray.root, ray.direction);
    const double before = middle - _diagonal - ray.aperture;
    query.start = ray.isLine ? before : std::max(0.0, before);
    query.slack = kRounding * (_diagonal + ray.aperture);
    const Vector root = ray.root + query.start * ray.direction - _center;
    RTCRayHit asked = {};
    asked.ray.org_x = static_cast<float>(root[0]);
    asked.ray.org_y = static_cast<float>(root[1]);
    asked.ray.org_z = static_cast<float>(root[2]);
    asked.ray.dir_x = static_cast<float>(ray.direction[0]);
    asked.ray.dir_y = static_cast<float>(ray.direction[1]);
    asked.ray.dir_z = static_cast<float>(ray.direction[2]);
    asked.ray.tnear = 0;
    asked.ray.tfar = query.Limit();
    asked.ray.mask = static_cast<unsigned>(-1);
    asked.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    asked.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    rtcInitIntersectContext(&query.context);
    if (asked.ray.tfar >= 0) {
        rtcIntersect1(top, &query.context, &asked);
    }
}

std::optional<PickHit> PickIndex::Scenes::Pick(const SceneAdapter& scene, const PickRay& asked) {
    const TestRay ray(asked);
    if (!(dot(ray.direction, ray.direction) > 0)) {
        return std::nullopt;
    }
    Query surface;
    surface.units = &_units;
    surface.scene = &scene;
    surface.ray = &ray;
    Query thin = surface;
    findBest(surface, _top[0].get());

    if (ray.aperture > 0) {
        if (ray.aperture > _apertureOfBoxes || kTightestFit * ray.aperture < _apertureOfBoxes) {
            _apertureOfBoxes = 2 * ray.aperture;
            build(Sort::Thin, _apertureOfBoxes);
        }
        thin.sort = Sort::Thin;
        thin.farthest = surface.best.distance + 2 * ray.aperture;
        findBest(thin, _top[1].get());
    }
    if (thin.best.found) {
        return hitOf(thin);
    }
    return surface.best.found ? std::optional<PickHit>(hitOf(surface)) : std::nullopt;
}

PickHit PickIndex::Scenes::hitOf(const Query& query) const {
    const PlacedUnit& place = _units.places[query.best.place];
    const Unit& unit = _units.units[place.unit];
    const UnitItem& item = unit.items[primitivesOf(unit, query.sort)[query.best.primitive].item];
    PickHit hit;
    hit.path.SetOrigin(viz::View3D);
    for (const viz::GeoNode* node : chainOf(place, unit, item)) {
        hit.path.AddValue(node->Id());
    }
    static constexpr PickKind kinds[] = {PickKind::Surface, PickKind::Line, PickKind::Point,
                                         PickKind::Text};
    hit.kind = kinds[static_cast<std::size_t>(item.shape.form)];
    hit.point = query.best.point;
    hit.distance = query.best.distance;
    hit.type = typeOf(place, unit, item);
    hit.annotation = isAnnotation(hit.type);
    hit.itemId = item.item->ID();
    return hit;
}

// --- the index ----------------------------------------------------------------------------------

PickIndex::PickIndex(SceneAdapter& scene) : _scene(scene) {}

PickIndex::~PickIndex() = default;

std::optional<PickHit> PickIndex::Pick(const PickRay& ray) {
    if (_scenes == nullptr || _revision != _scene.GeometryRevision()) {
        _scenes = std::make_unique<Scenes>(_scene.Root());
        _revision = _scene.GeometryRevision();
    }
    return _scenes->Pick(_scene, ray);
}

std::unique_ptr<Picker> makePickIndex(SceneAdapter& scene) {
    return std::make_unique<PickIndex>(scene);
}

}  // namespace kesview
