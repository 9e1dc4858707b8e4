/// @file
/// See ExchangeViews.h.

#include "reading/part21/ExchangeViews.h"

#include "reading/part21/ExchangeGeometry.h"
#include "reading/part21/ExchangeUnits.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace kesview {
namespace {

constexpr double degreesPerRadian = 57.295779513082320877;
constexpr std::size_t mostCombinations = 1000;  // of clipping planes in one view

struct Model {
    EntityNumber context = 0;
    std::vector<EntityNumber> items;
};

/// Which representation models show what a camera sees.
class CameraModels {
public:
    explicit CameraModels(const ExchangeFile& file) {
        for (const EntityNumber number : file.OfType("DRAUGHTING_MODEL")) {
            const ExchangeInstance model = file.Get(number);
            Model& read = _models[number];
            read.context = model.Attribute("REPRESENTATION", 2, 2).reference;
            read.items = model.Attribute("REPRESENTATION", 1, 1).References();
            for (const EntityNumber item : read.items) {
                if (file.Get(item).Is("CAMERA_MODEL_D3") ||
                    file.Get(item).Is("CAMERA_MODEL_D3_MULTI_CLIPPING")) {
                    _ofCamera[item].push_back(number);
                }
            }
        }
        for (const EntityNumber number : file.OfType("MODEL_GEOMETRIC_VIEW")) {
            const ExchangeInstance view = file.Get(number);
            const auto camera = view.Attribute("MODEL_GEOMETRIC_VIEW", 2, 2).reference;
            const auto model = view.Attribute("MODEL_GEOMETRIC_VIEW", 3, 3).reference;
            auto& models = _ofCamera[camera];
            if (std::find(models.begin(), models.end(), model) == models.end()) {
                models.push_back(model);
            }
        }
    }

    std::vector<const Model*> Of(EntityNumber camera) const {
        std::vector<const Model*> models;
        const auto found = _ofCamera.find(camera);
        if (found == _ofCamera.end()) {
            return models;
        }
        for (const EntityNumber number : found->second) {
            const auto model = _models.find(number);
            if (model != _models.end()) {
                models.push_back(&model->second);
            }
        }
        return models;
    }

private:
    std::unordered_map<EntityNumber, Model> _models;
    std::unordered_map<EntityNumber, std::vector<EntityNumber>> _ofCamera;
};

/// How far along the frame's axis the eye stands.
double eyeDistance(const Placement& frame, const Vector& point) {
    const double lateral = std::hypot(point[0], point[1]);
    if (lateral <= 1e-6 * (1 + std::abs(point[2]))) {
        return point[2];
    }
    const Vector fromFrame = point - frame.origin;
    const double along = dot(fromFrame, frame.z);
    const double across = lengthOf(fromFrame - along * frame.z);
    return across <= 1e-3 * std::abs(along) ? along : point[2];
}

/// Looks from the eye at the view plane; against the axis where the two fall together.
void aim(const Placement& frame, double eye, double plane, SavedView& view) {
    const double sign = plane > eye ? 1 : -1;
    const double distance = std::max(std::abs(plane - eye), 1e-3);
    view.eye = frame.origin + eye * frame.z;
    view.target = view.eye + sign * distance * frame.z;
    view.up = frame.y;
}

/// The window's centre may lie beside the axis.
void shift(const Placement& frame, const Vector& corner, SavedView& view) {
    const Vector centre = {corner[0] + view.width / 2, corner[1] + view.height / 2, 0};
    const Vector inModel = {centre[0] - frame.origin[0], centre[1] - frame.origin[1], 0};
    const double size = std::max(view.width, view.height);
    const bool centred = lengthOf(centre) < 1e-3 * size;
    const bool toldInModel = lengthOf(inModel) < 1e-3 * size;
    if (centred || toldInModel) {
        return;
    }
    const Vector offset = frame.Direction(centre);
    view.eye = view.eye + offset;
    view.target = view.target + offset;
}

class Views {
public:
    Views(const ExchangeFile& file, double millimetresPerUnit)
        : _file(file),
          _models(file),
          _units(readDefaultUnits(file)),
          _fallback(millimetresPerUnit) {}

    std::vector<ExchangeView> All() const {
        std::vector<ExchangeView> views;
        std::vector<EntityNumber> cameras = _file.OfType("CAMERA_MODEL_D3");
        const auto& clipped = _file.OfType("CAMERA_MODEL_D3_MULTI_CLIPPING");
        cameras.insert(cameras.end(), clipped.begin(), clipped.end());
        std::sort(cameras.begin(), cameras.end());
        cameras.erase(std::unique(cameras.begin(), cameras.end()), cameras.end());
        for (const EntityNumber camera : cameras) {
            views.push_back(Read(_file.Get(camera)));
        }
        return views;
    }

private:
    ExchangeView Read(const ExchangeInstance& camera) const {
        ExchangeView result;
        result.number = camera.number;
        result.view.key = "#" + std::to_string(camera.number);
        result.view.name = camera.Name();
        std::optional<double> length;
        for (const Model* model : _models.Of(camera.number)) {
            result.items.insert(result.items.end(), model->items.begin(), model->items.end());
            length = length ? length : readContextUnits(_file, model->context).length;
        }
        const double scale = length ? *length : _units.length.value_or(_fallback);
        const ExchangeGeometry geometry(_file, scale, 1);
        result.readable = ReadCamera(camera, geometry, result.view);
        ReadClipping(camera, geometry, result);
        return result;
    }

    bool ReadCamera(const ExchangeInstance& camera, const ExchangeGeometry& geometry,
                    SavedView& view) const {
        const auto frame = geometry.Frame(camera.Attribute("CAMERA_MODEL_D3", 0, 1).reference);
        const ExchangeInstance volume =
            _file.Get(camera.Attribute("CAMERA_MODEL_D3", 1, 2).reference);
        if (!frame || !volume.Is("VIEW_VOLUME")) {
            return false;
        }
        const auto point = geometry.Point(volume.Attribute("VIEW_VOLUME", 1, 1).reference);
        const double plane =
            volume.Attribute("VIEW_VOLUME", 2, 2).Unwrapped().number * geometry.LengthScale();
        aim(*frame, eyeDistance(*frame, point.value_or(Vector{0, 0, 0})), plane, view);

        const ExchangeInstance window = _file.Get(volume.Attribute("VIEW_VOLUME", 8, 8).reference);
        view.width = window.Attribute("PLANAR_EXTENT", 0, 1).number * geometry.LengthScale();
        view.height = window.Attribute("PLANAR_EXTENT", 1, 2).number * geometry.LengthScale();
        if (const auto corner = geometry.Frame(window.Attribute("PLANAR_BOX", 0, 3).reference)) {
            shift(*frame, corner->origin, view);
        }
        view.perspective = volume.Attribute("VIEW_VOLUME", 0, 0).text == "CENTRAL";
        if (view.perspective) {
            const double distance = lengthOf(view.target - view.eye);
            view.viewAngle = 2 * std::atan2(view.height / 2, distance) * degreesPerRadian;
        }
        return true;
    }

    void ReadClipping(const ExchangeInstance& camera, const ExchangeGeometry& geometry,
                      ExchangeView& result) const {
        std::set<EntityNumber> seen;
        for (const EntityNumber number :
             camera.Attribute("CAMERA_MODEL_D3_MULTI_CLIPPING", 0, 3).References()) {
            AddPlanes(number, geometry, result, seen);
        }
    }

    /// Unions and intersections may hold each other; each of them counts once.
    void AddPlanes(EntityNumber number, const ExchangeGeometry& geometry, ExchangeView& result,
                   std::set<EntityNumber>& seen) const {
        const ExchangeInstance instance = _file.Get(number);
        if (instance.HasTypeEnding("_UNION") || instance.HasTypeEnding("_INTERSECTION")) {
            if (seen.size() >= mostCombinations || !seen.insert(number).second) {
                return;
            }
            for (const EntityNumber child : instance.References()) {
                AddPlanes(child, geometry, result, seen);
            }
            return;
        }
        const auto frame = geometry.Frame(instance.Attribute("ELEMENTARY_SURFACE", 0, 1).reference);
        if (!frame) {
            return;
        }
        ++result.planeCount;
        if (!result.view.clipping) {
            const Vector forward = result.view.target - result.view.eye;
            const bool away = dot(frame->z, forward) >= 0;
            result.view.clipping = {frame->origin, away ? frame->z : -1 * frame->z};
        }
    }

    const ExchangeFile& _file;
    CameraModels _models;
    ContextUnits _units;
    double _fallback;
};

bool isSame(const Vector& a, const Vector& b, double tolerance) {
    return lengthOf(a - b) <= tolerance;
}

bool seesSame(const SavedView& a, const SavedView& b) {
    const double size = 1 + lengthOf(a.target - a.eye);
    const bool clippedAlike =
        a.clipping.has_value() == b.clipping.has_value() &&
        (!a.clipping || (isSame(a.clipping->point, b.clipping->point, 1e-6 * size) &&
                         isSame(a.clipping->normal, b.clipping->normal, 1e-9)));
    return a.name == b.name && a.perspective == b.perspective &&
           isSame(a.eye, b.eye, 1e-6 * size) && isSame(a.target, b.target, 1e-6 * size) &&
           isSame(a.up, b.up, 1e-9) && std::abs(a.width - b.width) <= 1e-6 * size &&
           std::abs(a.height - b.height) <= 1e-6 * size && clippedAlike;
}

}  // namespace

std::vector<ExchangeView> readViews(const ExchangeFile& file, double millimetresPerUnit) {
    std::vector<ExchangeView> views;
    for (ExchangeView& view : Views(file, millimetresPerUnit).All()) {
        const auto same = std::find_if(views.begin(), views.end(), [&](const ExchangeView& other) {
            return seesSame(other.view, view.view);
        });
        if (same == views.end()) {
            views.push_back(std::move(view));
        } else {
            same->items.insert(same->items.end(), view.items.begin(), view.items.end());
        }
    }
    return views;
}

}  // namespace kesview
