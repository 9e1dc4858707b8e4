#pragma once

/// @file
/// Numbers, symbols and words of annotations.

#include "document/Document.h"
#include "reading/part21/ExchangeUnits.h"

#include <optional>
#include <string>

namespace kesview {

/// The shortest decimal text that tells @p value to nine digits: "5.5", "0", "-0.05".
std::string formatNumber(double value);
/// With that many decimals.
std::string formatNumber(double value, int decimals);

/// The value in the unit of the file, angles in degrees with their sign.
std::string formatMeasure(const ExchangeMeasure& measure, std::optional<int> decimals);

/// "in" for inches, empty for millimetres and angles, otherwise the unit's name.
std::string unitSuffix(const ExchangeUnit& unit);

/// The symbol of a modifier that an exchange file names so, "Ⓜ"; the name itself, in brackets,
/// where it has none.
std::string modifierSymbol(const std::string& enumeration);

/// The annotation kind and type word that the name of a presentation tells: "fcf", "datum
/// target", "radial dimension", "general note". None for names that tell nothing.
struct NamedKind {
    AnnotationKind kind = AnnotationKind::Other;
    std::string type;
};
std::optional<NamedKind> kindOfPresentation(const std::string& name);

}  // namespace kesview
