/// @file
/// See NoteTexts.h.

#include "reading/part21/NoteTexts.h"

namespace kesview {

NoteTexts::NoteTexts(const ExchangeFile& file) : _file(file) {
    for (const EntityNumber number : file.OfType("PROPERTY_DEFINITION_REPRESENTATION")) {
        const ExchangeInstance link = file.Get(number);
        const char* part = "PROPERTY_DEFINITION_REPRESENTATION";
        std::string& text = _texts[link.Attribute(part, 0, 0).reference];
        const ExchangeInstance representation = file.Get(link.Attribute(part, 1, 1).reference);
        for (const EntityNumber item :
             representation.Attribute("REPRESENTATION", 1, 1).References()) {
            const ExchangeInstance described = file.Get(item);
            if (described.Is("DESCRIPTIVE_REPRESENTATION_ITEM")) {
                text += (text.empty() ? "" : "\n") +
                        described.Attribute("DESCRIPTIVE_REPRESENTATION_ITEM", 0, 1).text;
            }
        }
    }
}

std::optional<std::string> NoteTexts::TextOf(EntityNumber number) const {
    const ExchangeInstance property = _file.Get(number);
    if (property.parts.empty() || property.parts.front().type != "PROPERTY_DEFINITION") {
        return std::nullopt;
    }
    const auto found = _texts.find(number);
    return found == _texts.end() ? std::string() : found->second;
}

}  // namespace kesview
