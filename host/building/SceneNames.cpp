/// @file
#include "building/SceneNames.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace kesview {

namespace {

/// The same names, with a number behind each that repeats an earlier one.
std::vector<std::string> toldApart(std::vector<std::string> names) {
    const std::unordered_set<std::string> given(names.begin(), names.end());
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> numbers;
    for (std::string& name : names) {
        if (taken.insert(name).second) {
            continue;
        }
        std::size_t& number = numbers.try_emplace(name, 1).first->second;
        std::string numbered;
        do {
            numbered = name + ":" + std::to_string(++number);
        } while (given.count(numbered) != 0 || !taken.insert(numbered).second);
        name = std::move(numbered);
    }
    return names;
}

std::vector<std::string> namesOf(const std::vector<Component>& components,
                                 const std::vector<Product>& products) {
    std::vector<std::string> names;
    names.reserve(components.size());
    for (const Component& component : components) {
        const std::string& product = products[component.product].name;
        const std::string& fallback = product.empty() ? "Instance" : product;
        names.push_back(component.name.empty() ? fallback : component.name);
    }
    return toldApart(std::move(names));
}

std::vector<std::string> namesOf(const std::vector<Body>& bodies) {
    std::vector<std::string> names;
    names.reserve(bodies.size());
    for (const Body& body : bodies) {
        names.push_back(body.name.empty() ? "Body" : body.name);
    }
    return toldApart(std::move(names));
}

}  // namespace

SceneNames::SceneNames(const Document& document)
    : _roots(namesOf(document.roots, document.products)) {
    for (const Product& product : document.products) {
        _components.push_back(namesOf(product.components, document.products));
        _bodies.push_back(namesOf(product.bodies));
    }
}

std::string sceneNameOf(const Face& face) {
    return face.name.empty() ? "face " + std::to_string(face.id) : face.name;
}

std::string sceneNameOf(const Edge& edge) {
    return edge.name.empty() ? "edge " + std::to_string(edge.id) : edge.name;
}

std::string sceneNameOf(const Annotation& annotation) {
    for (const std::string* text : {&annotation.name, &annotation.label, &annotation.text}) {
        if (!text->empty()) {
            return *text;
        }
    }
    return annotation.key;
}

}  // namespace kesview
