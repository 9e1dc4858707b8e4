/// @file
#include "loading/AnnotationLoader.h"

#include "loading/Ids.h"
#include "loading/Links.h"
#include "loading/LoaderCall.h"
#include "loading/TrianglesLoader.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/AVizEdgeLoader.h>
#include <KesVizCore/model/AVizFaceLoader.h>
#include <KesVizCore/model/AVizTextLoader.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/pmi/AVizPMILoader.h>
#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kesview {

namespace {

// --- lines, areas and texts ---------------------------------------------------------------------

class LineLoader : public viz::AVizEdgeLoader {
public:
    explicit LineLoader(std::vector<float>& points) : _points(points) {}

protected:
    viz::VizElement* createAndFill() override {
        auto* const edge = static_cast<viz::VizEdge*>(makeOne());
        if (edge != nullptr) {
            edge->SetVertices(_points);
            release(_points);
        }
        return edge;
    }

private:
    std::vector<float>& _points;
};

class AreaLoader : public viz::AVizFaceLoader {
public:
    explicit AreaLoader(FilledArea& area) : _area(area) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizFace> face(static_cast<viz::VizFace*>(makeOne()));
        if (face == nullptr) {
            return nullptr;
        }
        face->SetVertices(_area.points.size() / 3, _area.points.data());
        release(_area.points);
        face->AddPolygon(loadOne<viz::VizPolygon>(TrianglesLoader(_area.triangles)).release());
        return face.release();
    }

private:
    FilledArea& _area;
};

class TextLoader : public viz::AVizTextLoader {
public:
    explicit TextLoader(const PlacedText& text) : _text(text) {}

protected:
    viz::VizElement* createAndFill() override {
        auto* const text = static_cast<viz::VizText*>(makeOne());
        if (text != nullptr) {
            text->SetText(widen(_text.text));
            setFontAttrs(*text, {static_cast<float>(_text.height), 1.0F, 1.0F});
            place(*text);
        }
        return text;
    }

private:
    // The direction of the text is u, and its normal u x v, so that v is normal x u.
    void place(viz::VizText& text) const {
        const auto narrowed = [](const Vector& vector, float* out) {
            std::transform(vector.begin(), vector.end(), out,
                           [](double value) { return static_cast<float>(value); });
        };
        float position[3];
        narrowed(_text.position, position);
        float u[3];
        narrowed(_text.u, u);
        float v[3];
        narrowed(_text.v, v);
        float normal[3];
        viz::CrossProduct(u, v, normal);
        text.SetAnchorPoint(position);
        text.SetDirection(u);
        text.SetNormal(normal);
    }

    const PlacedText& _text;
};

// --- the text of what has no drawing ------------------------------------------------------------

/// The longest diagonal of the boxes around the edges of one body each; 0 without any edge.
double largestDiagonal(const viz::VizContainer& geometry) {
    double largest = 0;
    for (const viz::VizMesh* mesh : geometry.GetMeshes()) {
        constexpr float none = std::numeric_limits<float>::max();
        float box[6] = {none, none, none, -none, -none, -none};
        for (const viz::VizEdge* edge : mesh->GetEdges()) {
            float extrema[6];
            edge->GetExtrema(extrema);
            for (int axis = 0; axis < 3; ++axis) {
                box[axis] = std::min(box[axis], extrema[axis]);
                box[axis + 3] = std::max(box[axis + 3], extrema[axis + 3]);
            }
        }
        if (box[0] <= box[3]) {
            largest = std::max(largest, std::hypot(double{box[3]} - double{box[0]},
                                                   double{box[4]} - double{box[1]},
                                                   double{box[5]} - double{box[2]}));
        }
    }
    return largest;
}

/// What shares the drawing of another needs none of its own.
bool isUndrawn(const Annotation& annotation) {
    return annotation.attributes.count("DrawnWith") == 0 && annotation.lines.empty() &&
           annotation.areas.empty() && annotation.texts.empty();
}

PlacedText textInPlane(const Annotation& annotation, double height) {
    const auto& [origin, u, v] = *annotation.plane;
    return {annotation.text, origin, u, v, height};
}

// --- annotations --------------------------------------------------------------------------------

/// What is the same for all annotations of a document.
struct Setting {
    const LinkedEntities& entities;
    const LoadedModel& model;
    double textHeight;
};

class AnnotationLoader : public viz::AVizPMILoader {
public:
    AnnotationLoader(Annotation& source, const Setting& setting)
        : _source(source), _setting(setting) {
        const viz::EntityType type = entityTypeOf(source.kind);
        setGroupAndType({type, nameOfAnnotations(type), 0}, {source.typeCode, source.type, 0});
    }

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizPMI> pmi(static_cast<viz::VizPMI*>(makeOne()));
        if (pmi == nullptr) {
            return nullptr;
        }
        const viz::EntityId entity = entityOf(_source);
        pmi->SetEntityID(entity);
        pmi->SetVisualID(visualIdOf(entity));
        pmi->SetMechanicalID(widen(_source.key));
        pmi->SetName(widen(_source.name));
        pmi->SetHidden(_source.hidden);
        if (_source.color.has_value()) {
            pmi->SetColor(colorOf(*_source.color));
        }
        draw(*pmi);
        link(*pmi);
        return pmi.release();
    }

private:
    // Lines come first: the first of them replaces the extrema, which texts widen.
    void draw(viz::VizPMI& pmi) const {
        const bool undrawn = isUndrawn(_source);
        pmi.SetEdgeCountHint(_source.lines.size());
        for (std::vector<float>& line : _source.lines) {
            pmi.AddEdge(loadOne<viz::VizEdge>(LineLoader(line)).release());
        }
        for (FilledArea& area : _source.areas) {
            pmi.AddFace(loadOne<viz::VizFace>(AreaLoader(area)).release());
        }
        for (const PlacedText& text : _source.texts) {
            pmi.AddText(loadOne<viz::VizText>(TextLoader(text)).release());
        }
        if (undrawn && _source.plane.has_value() && !_source.text.empty()) {
            const PlacedText text = textInPlane(_source, _setting.textHeight);
            pmi.AddText(loadOne<viz::VizText>(TextLoader(text)).release());
        }
    }

    void link(viz::VizPMI& pmi) const {
        std::vector<std::wstring> visualIds;
        std::vector<std::wstring> mechanicalIds;
        for (const viz::EntityId& entity : _setting.entities.EntitiesOf(_source)) {
            const auto found = _setting.model.elements.find(entity);
            if (found != _setting.model.elements.end()) {
                visualIds.push_back(found->second->GetVisualID());
                mechanicalIds.push_back(mechanicalIdOf(*found->second));
            }
        }
        pmi.SetLinkedEntityIDs(visualIds);
        pmi.SetLinkedEntityMechIDs(mechanicalIds);
    }

    // Only some kinds of elements have one, each of its own.
    static std::wstring mechanicalIdOf(const viz::VizElement& element) {
        if (const auto* face = dynamic_cast<const viz::VizFace*>(&element)) {
            return face->GetMechanicalID();
        }
        if (const auto* edge = dynamic_cast<const viz::VizEdge*>(&element)) {
            return edge->GetMechanicalID();
        }
        const auto* mesh = dynamic_cast<const viz::VizMesh*>(&element);
        return mesh != nullptr ? mesh->GetMechanicalID() : std::wstring();
    }

    Annotation& _source;
    const Setting& _setting;
};

// --- what annotations mean ----------------------------------------------------------------------

std::wstring joined(const std::vector<std::string>& keys) {
    std::wstring text;
    for (const std::string& key : keys) {
        text += (text.empty() ? L"" : L", ") + widen(key);
    }
    return text;
}

// A plain record, which no loader makes.
std::unique_ptr<viz::SemanticPMI> makeRecord(const Annotation& source,
                                             const LinkedEntities& entities) {
    auto record = std::make_unique<viz::SemanticPMI>();
    record->Id = widen(source.key);
    record->Name = widen(source.name);
    record->Label = widen(source.label);
    record->LinkedEntities = entities.EntitiesOf(source);
    for (const auto& [key, value] : source.attributes) {
        record->Attributes.emplace(widen(key), widen(value));
    }
    if (!source.datums.empty()) {
        record->Attributes[L"DatumRefDatas"] = joined(source.datums);
    }
    return record;
}

/// The container refuses, without a word, what has a key that is there already.
bool isNewKey(const LoadedModel& model, const std::string& key) {
    return model.pmi.GetVizPMI(widen(key)) == nullptr;
}

Finding repeatedKey(const Annotation& annotation) {
    return {Finding::Severity::Warning, "pmi.repeated-key",
            "An annotation is left out because another has the same key.", annotation.key, 1};
}

}  // namespace

void loadAnnotations(Document& document, LoadedModel& model) {
    const LinkedEntities entities(document);
    const double diagonal = largestDiagonal(model.geometry);
    const Setting setting{entities, model, diagonal > 0 ? diagonal / 100 : 3.5};
    for (Annotation& annotation : document.annotations) {
        if (!isNewKey(model, annotation.key)) {
            document.findings.push_back(repeatedKey(annotation));
            continue;
        }
        auto loaded = loadOne<viz::VizPMI>(AnnotationLoader(annotation, setting));
        model.elements.emplace(entityOf(annotation), loaded.get());
        model.pmi.AddVizPMI(loaded.release());
        if (annotation.semantic) {
            model.pmi.AddSemanticPMI(makeRecord(annotation, entities).release());
        }
    }
}

}  // namespace kesview
