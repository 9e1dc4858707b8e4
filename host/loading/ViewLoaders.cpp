/// @file
#include "loading/ViewLoaders.h"

#include "document/Vectors.h"
#include "loading/Ids.h"
#include "loading/LoaderCall.h"

#include <KesVizCore/model/AVizCaptureLoader.h>
#include <KesVizCore/model/AVizViewLoader.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizView.h>

#include <array>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace kesview {

namespace {

// --- vectors ------------------------------------------------------------------------------------

using Triple = std::array<float, 3>;

/// Length 1; none where there is no direction.
std::optional<Vector> unit(const Vector& vector) {
    const double length = std::hypot(vector[0], vector[1], vector[2]);
    if (!std::isfinite(length) || length < 1e-12) {
        return std::nullopt;
    }
    return Vector{vector[0] / length, vector[1] / length, vector[2] / length};
}

Triple narrowed(const Vector& vector) {
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]),
            static_cast<float>(vector[2])};
}

// --- cameras ------------------------------------------------------------------------------------

/// In single precision, as the library keeps them.
struct Frame {
    Triple eye;
    Triple target;
    Triple right;
    Triple up;
};

/// None where eye and target coincide, also after rounding, or up is along the line of sight.
std::optional<Frame> frameOf(const SavedView& view) {
    const std::optional<Vector> toEye = unit(view.eye - view.target);
    if (!toEye.has_value()) {
        return std::nullopt;
    }
    const std::optional<Vector> right = unit(cross(view.up, *toEye));
    if (!right.has_value() || narrowed(view.eye) == narrowed(view.target)) {
        return std::nullopt;
    }
    return Frame{narrowed(view.eye), narrowed(view.target), narrowed(*right),
                 narrowed(cross(*toEye, *right))};
}

/// Two directions in the plane whose cross product is its normal; none without a normal.
std::optional<std::array<Vector, 2>> axesOf(const SavedView::Plane& plane) {
    const std::optional<Vector> normal = unit(plane.normal);
    if (!normal.has_value()) {
        return std::nullopt;
    }
    const bool isAlongX = std::fabs((*normal)[0]) > 0.9;
    const Vector u = *unit(cross(isAlongX ? Vector{0, 1, 0} : Vector{1, 0, 0}, *normal));
    return std::array<Vector, 2>{u, cross(*normal, u)};
}

// --- views and captures -------------------------------------------------------------------------

/// A saved view, and what of it was worked out before.
struct Source {
    const SavedView& view;
    std::optional<Frame> frame;
    std::vector<std::wstring> members;
    const viz::VizPMICollection::EntityMap& elements;
};

void fill(viz::VizPMICollection& collection, const Source& source, const viz::EntityId& entity) {
    collection.SetEntityID(entity);
    collection.SetName(widen(source.view.name));
    collection.SetVisualID(visualIdOf(entity));
    collection.SetMechanicalID(widen(source.view.key));
    collection.SetMemberCountHint(static_cast<int>(source.members.size()));
    for (const std::wstring& member : source.members) {
        collection.AddMember(member);
    }
    collection.SetEntityMap(&source.elements);
}

class ViewLoader : public viz::AVizViewLoader {
public:
    explicit ViewLoader(const Source& source) : _source(source) {}

protected:
    viz::VizElement* createAndFill() override {
        auto* const view = static_cast<viz::VizView*>(makeOne());
        if (view == nullptr) {
            return nullptr;
        }
        fill(*view, _source, entityOf(_source.view));
        if (_source.frame.has_value()) {
            const Frame& frame = *_source.frame;
            view->SetPlane(frame.target.data(), frame.right.data(), frame.up.data());
        }
        return view;
    }

private:
    const Source& _source;
};

class CaptureLoader : public viz::AVizCaptureLoader {
public:
    CaptureLoader(const Source& source, Id id)
        : _source(source), _entity(0, viz::CaptureType, id) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizCapture> capture(makeOne());
        if (capture == nullptr) {
            return nullptr;
        }
        fill(*capture, _source, _entity);
        aim(*capture);
        clip(*capture);
        return capture.release();
    }

private:
    void aim(viz::VizCapture& capture) const {
        if (!_source.frame.has_value()) {
            return;
        }
        Frame frame = *_source.frame;  // a copy: the arguments are not const
        capture.SetOrientation(frame.eye.data(), frame.target.data(), frame.up.data());
        if (_source.view.perspective) {
            capture.SetCameraType(viz::VizCapture::Perspective);
            capture.SetPerspectiveViewAngle(static_cast<float>(_source.view.viewAngle));
        } else {
            capture.SetCameraType(viz::VizCapture::Orthographic);
        }
        if (_source.view.height > 0) {
            capture.SetOrthographicZoomFactor(zoomOf(_source.view.height));
        }
    }

    // The factor 1 says that the height is not known; the next one is as near as can be.
    static float zoomOf(double height) {
        const auto zoom = static_cast<float>(height);
        return zoom == 1.0F ? std::nextafter(1.0F, 2.0F) : zoom;
    }

    void clip(viz::VizCapture& capture) const {
        if (!_source.view.clipping.has_value()) {
            return;
        }
        const std::optional<std::array<Vector, 2>> axes = axesOf(*_source.view.clipping);
        if (axes.has_value()) {
            const Triple point = narrowed(_source.view.clipping->point);
            capture.SetClippingPlane(point.data(), narrowed((*axes)[0]).data(),
                                     narrowed((*axes)[1]).data());
        }
    }

    const Source& _source;
    viz::EntityId _entity;
};

// --- members ------------------------------------------------------------------------------------

Finding warning(const char* code, const char* message, const SavedView& view) {
    return {Finding::Severity::Warning, code, message, view.name.empty() ? view.key : view.name, 1};
}

using IdsByKey = std::unordered_map<std::string, viz::EntityId>;

IdsByKey idsByKey(const Document& document) {
    IdsByKey ids;
    for (const Annotation& annotation : document.annotations) {
        ids.emplace(annotation.key, entityOf(annotation));
    }
    return ids;
}

/// The visual ids of what @p view shows; what is unknown becomes one finding.
std::vector<std::wstring> membersOf(const SavedView& view, const IdsByKey& ids,
                                    Document& document) {
    std::vector<std::wstring> members;
    if (view.showsAll) {
        for (const Annotation& annotation : document.annotations) {
            members.push_back(visualIdOf(entityOf(annotation)));
        }
        return members;
    }
    std::uint64_t unknown = 0;
    for (const std::string& key : view.members) {
        const auto found = ids.find(key);
        if (found != ids.end()) {
            members.push_back(visualIdOf(found->second));
        } else {
            ++unknown;
        }
    }
    if (unknown > 0) {
        Finding finding = warning("view.unknown-member",
                                  "A saved view shows an annotation that was not read.", view);
        finding.count = unknown;
        document.findings.push_back(std::move(finding));
    }
    return members;
}

void tellOfLosses(const Source& source, Document& document) {
    const SavedView& view = source.view;
    if (!source.frame.has_value()) {
        document.findings.push_back(
            warning("view.no-camera", "A saved view has a camera that looks nowhere.", view));
    }
    if (view.clipping.has_value() && !axesOf(*view.clipping).has_value()) {
        document.findings.push_back(warning(
            "view.no-clipping", "A saved view has a clipping plane without direction.", view));
    }
}

}  // namespace

void loadViews(Document& document, LoadedModel& model) {
    const IdsBeyond ids(document);
    const IdsByKey annotations = idsByKey(document);
    for (std::size_t i = 0; i < document.views.size(); ++i) {
        const SavedView& view = document.views[i];
        const Source source{view, frameOf(view), membersOf(view, annotations, document),
                            model.elements};
        tellOfLosses(source, document);
        model.pmi.AddView(loadOne<viz::VizView>(ViewLoader(source)).release());
        model.pmi.AddCapture(
            loadOne<viz::VizCapture>(CaptureLoader(source, ids.Capture(i))).release());
    }
}

}  // namespace kesview
