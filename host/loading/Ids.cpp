/// @file
#include "loading/Ids.h"

#include <algorithm>

namespace kesview {

namespace {

const wchar_t* wordOf(viz::EntityType type) {
    switch (type) {
        case viz::FaceType:
            return L"face ";
        case viz::EdgeType:
            return L"edge ";
        case viz::VertexType:
            return L"vertex ";
        case viz::BodyType:
            return L"body ";
        case viz::PartType:
        case viz::AssemblyType:
            return L"product ";
        case viz::ViewType:
            return L"view ";
        case viz::CaptureType:
            return L"capture ";
        default:
            return L"annotation ";
    }
}

template <typename Elements>
Id highestOf(const Elements& elements, Id highest) {
    for (const auto& element : elements) {
        highest = std::max(highest, element.id);
    }
    return highest;
}

Id highestIn(const Document& document) {
    Id highest = highestOf(document.products, 1);
    for (const Product& product : document.products) {
        highest = highestOf(product.components, highestOf(product.bodies, highest));
        for (const Body& body : product.bodies) {
            highest = highestOf(body.edges, highestOf(body.faces, highest));
        }
    }
    highest = highestOf(document.roots, highest);
    return highestOf(document.views, highestOf(document.annotations, highest));
}

viz::EntityType typeOf(const Product& product) {
    return product.components.empty() ? viz::PartType : viz::AssemblyType;
}

}  // namespace

std::wstring visualIdOf(const viz::EntityId& entity) {
    return wordOf(entity.Type) + std::to_wstring(entity.ID);
}

viz::EntityType entityTypeOf(AnnotationKind kind) {
    switch (kind) {
        case AnnotationKind::Dimension:
            return viz::DimensionType;
        case AnnotationKind::Tolerance:
            return viz::ToleranceType;
        case AnnotationKind::Datum:
        case AnnotationKind::DatumTarget:
            return viz::DatumType;
        case AnnotationKind::Note:
            return viz::NoteType;
        case AnnotationKind::SurfaceFinish:
            return viz::SurfaceFinishType;
        case AnnotationKind::Weld:
            return viz::WeldType;
        case AnnotationKind::Other:
            break;
    }
    return viz::AnnotationType;
}

std::string nameOfAnnotations(viz::EntityType type) {
    switch (type) {
        case viz::DimensionType:
            return "Dimension";
        case viz::ToleranceType:
            return "Tolerance";
        case viz::DatumType:
            return "Datum";
        case viz::NoteType:
            return "Note";
        case viz::SurfaceFinishType:
            return "Surface finish";
        case viz::WeldType:
            return "Weld";
        default:
            return "Annotation";
    }
}

viz::EntityType typeOfEdges(const Body& body) {
    const bool isWire = body.kind == BodyKind::Wire && body.faces.empty() && !body.edges.empty();
    return isWire ? viz::WireType : viz::EdgeType;
}

viz::EntityId entityOf(const Product& product, const Body& body) {
    return {product.id, viz::BodyType, body.id};
}

viz::EntityId entityOf(const Body& body, const Face& face) {
    return {body.id, viz::FaceType, face.id};
}

viz::EntityId entityOf(const Body& body, const Edge& edge) {
    return {body.id, viz::EdgeType, edge.id};
}

viz::EntityId entityOf(const Annotation& annotation) {
    return {0, entityTypeOf(annotation.kind), annotation.id};
}

viz::EntityId entityOf(const SavedView& view) {
    return {0, viz::ViewType, view.id};
}

viz::EntityId entityOf(const Product& product) {
    return {0, typeOf(product), product.id};
}

viz::EntityId entityOf(const Product& product, const Component& component) {
    return {product.id, typeOf(product), component.id};
}

IdsBeyond::IdsBeyond(const Document& document)
    : _highest(highestIn(document)), _viewCount(document.views.size()) {}

}  // namespace kesview
