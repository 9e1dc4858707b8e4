#include "PmiLoaders.h"

#include "ModelLoaders.h"

#include <KesVizCore/model/AVizCaptureLoader.h>
#include <KesVizCore/model/AVizTextLoader.h>
#include <KesVizCore/model/AVizViewLoader.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/pmi/AVizPMILoader.h>
#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <memory>
#include <vector>

namespace host {

namespace {

using Elements = viz::VizPMICollection::EntityMap;

std::vector<viz::EntityId> facesOf(const Annotation& annotation, const Annotations& all) {
    std::vector<viz::EntityId> faces;
    for (const std::uint64_t face : annotation.faces) {
        faces.emplace_back(all.bodyId, viz::FaceType, face);
    }
    return faces;
}

// --- annotations --------------------------------------------------------------------------------

class TextLoader : public viz::AVizTextLoader {
public:
    explicit TextLoader(const Annotation& source) : _source(source) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizText> text(static_cast<viz::VizText*>(makeOne()));
        if (text == nullptr) {
            return nullptr;
        }
        text->SetText(_source.text);
        text->SetAnchorPoint(_source.textAnchor.data());
        setFontAttrs(*text, {3.5F, 1.0F, 1.0F});
        return text.release();
    }

private:
    const Annotation& _source;
};

viz::VizPMIType typeOf(viz::EntityType type) {
    const char* const name = type == viz::DimensionType   ? "Dimension"
                             : type == viz::ToleranceType ? "Tolerance"
                             : type == viz::DatumType     ? "Datum"
                                                          : "Note";
    return {type, name, 0};
}

class PmiLoader : public viz::AVizPMILoader {
public:
    PmiLoader(const Annotation& source, const Annotations& all, const Elements& elements)
        : _source(source), _all(all), _elements(elements) {
        setGroupAndType({viz::AnnotationType, "Annotation", 0}, typeOf(source.type));
    }

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizPMI> pmi(static_cast<viz::VizPMI*>(makeOne()));
        if (pmi == nullptr) {
            return nullptr;
        }
        const viz::EntityId entity(_all.id, _source.type, _source.id);
        pmi->SetEntityID(entity);
        pmi->SetVisualID(visualIdOf(entity));
        pmi->SetMechanicalID(_source.mechanicalId);
        pmi->SetName(_source.name);
        for (const std::vector<float>& line : _source.lines) {  // before the text: see AddEdge
            pmi->AddEdge(load<viz::VizEdge>(EdgeLoader(line)).release());
        }
        pmi->AddText(load<viz::VizText>(TextLoader(_source)).release());
        link(*pmi);
        return pmi.release();
    }

private:
    void link(viz::VizPMI& pmi) const {
        std::vector<std::wstring> visualIds;
        std::vector<std::wstring> mechanicalIds;
        for (const viz::EntityId& entity : facesOf(_source, _all)) {
            const auto found = _elements.find(entity);
            if (found != _elements.end() && entity.IsFace()) {
                const auto& face = static_cast<const viz::VizFace&>(*found->second);
                visualIds.push_back(face.GetVisualID());
                mechanicalIds.push_back(face.GetMechanicalID());
            }
        }
        pmi.SetLinkedEntityIDs(visualIds);
        pmi.SetLinkedEntityMechIDs(mechanicalIds);
    }

    const Annotation& _source;
    const Annotations& _all;
    const Elements& _elements;
};

// A plain record, which no loader makes.
std::unique_ptr<viz::SemanticPMI> makeRecord(const Annotation& source, const Annotations& all) {
    auto record = std::make_unique<viz::SemanticPMI>();
    record->Id = source.mechanicalId;
    record->Name = source.name;
    record->Attributes = source.values;
    record->LinkedEntities = facesOf(source, all);
    return record;
}

// --- views and captures -------------------------------------------------------------------------

void fill(viz::VizPMICollection& collection, const Sight& source, const Elements& elements) {
    collection.SetName(source.name);
    collection.SetVisualID(source.name);
    collection.SetMechanicalID(std::to_wstring(source.id));
    for (const std::uint64_t annotation : source.annotations) {
        collection.AddMember(visualIdOf(viz::EntityId(0, viz::AnnotationType, annotation)));
    }
    collection.SetEntityMap(&elements);
}

class ViewLoader : public viz::AVizViewLoader {
public:
    ViewLoader(const Sight& source, const Elements& elements)
        : _source(source), _elements(elements) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizView> view(static_cast<viz::VizView*>(makeOne()));
        if (view == nullptr) {
            return nullptr;
        }
        fill(*view, _source, _elements);
        if (_source.frame.has_value()) {
            const auto& [origin, u, v] = *_source.frame;
            view->SetPlane(origin.data(), u.data(), v.data());
        }
        return view.release();
    }

private:
    const Sight& _source;
    const Elements& _elements;
};

class CaptureLoader : public viz::AVizCaptureLoader {
public:
    CaptureLoader(const Sight& source, const Elements& elements)
        : _source(source), _elements(elements) {}

protected:
    viz::VizElement* createAndFill() override {
        std::unique_ptr<viz::VizCapture> capture(makeOne());
        if (capture == nullptr) {
            return nullptr;
        }
        fill(*capture, _source, _elements);
        if (_source.frame.has_value()) {
            auto [eye, target, up] = *_source.frame;  // copies: the arguments are not const
            capture->SetOrientation(eye.data(), target.data(), up.data());
            capture->SetCameraType(viz::VizCapture::Orthographic);
        }
        return capture.release();
    }

private:
    const Sight& _source;
    const Elements& _elements;
};

}  // namespace

void loadPmi(const Annotations& source, Elements& elements, viz::VizPMIContainer& pmi) {
    for (const Annotation& annotation : source.annotations) {
        auto loaded = load<viz::VizPMI>(PmiLoader(annotation, source, elements));
        elements.emplace(viz::EntityId(source.id, annotation.type, annotation.id), loaded.get());
        pmi.AddVizPMI(loaded.release());  // the mechanical ids differ: none is refused
        pmi.AddSemanticPMI(makeRecord(annotation, source).release());
    }
    for (const Sight& view : source.views) {
        pmi.AddView(load<viz::VizView>(ViewLoader(view, elements)).release());
    }
    for (const Sight& capture : source.captures) {
        pmi.AddCapture(load<viz::VizCapture>(CaptureLoader(capture, elements)).release());
    }
}

AnnotationsByFace annotationsByFace(const viz::VizPMIContainer& pmi) {
    AnnotationsByFace byFace;
    for (const viz::VizPMI* annotation : pmi.GetVizPMIs()) {
        std::vector<viz::EntityId> faces;
        pmi.GetBREPLinks(annotation->GetMechanicalID(), faces);
        for (const viz::EntityId& face : faces) {
            byFace.emplace(face, annotation->GetMechanicalID());
        }
    }
    return byFace;
}

}  // namespace host
