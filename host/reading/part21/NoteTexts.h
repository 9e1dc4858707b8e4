#pragma once

/// @file
/// Texts that an exchange file holds as properties.

#include "reading/part21/ExchangeFile.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace kesview {

class NoteTexts {
public:
    /// @p file must outlive this.
    explicit NoteTexts(const ExchangeFile& file);

    /// What the property @p number describes, its texts in lines; empty where it holds none, none
    /// where @p number is no property.
    std::optional<std::string> TextOf(EntityNumber number) const;

private:
    const ExchangeFile& _file;
    std::unordered_map<EntityNumber, std::string> _texts;
};

}  // namespace kesview
