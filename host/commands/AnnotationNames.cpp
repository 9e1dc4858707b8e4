#include "commands/AnnotationNames.h"

namespace kesview {

AnnotationNames::AnnotationNames(const Document& document) {
    for (const Annotation& annotation : document.annotations) {
        _byKey.emplace(annotation.key, &annotation);
    }
}

std::string AnnotationNames::Of(const std::string& key) const {
    const auto found = _byKey.find(key);
    if (found == _byKey.end()) {
        return "";
    }
    const Annotation& annotation = *found->second;
    for (const std::string* text : {&annotation.text, &annotation.name, &annotation.label}) {
        if (!text->empty()) {
            return *text;
        }
    }
    return annotation.type;
}

}  // namespace kesview
