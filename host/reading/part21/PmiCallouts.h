#pragma once

/// @file
/// How the annotations of an exchange file are presented: callouts and annotation occurrences.

#include "reading/part21/PmiDrawing.h"

#include <string>
#include <vector>

namespace kesview {

/// One callout, or an annotation occurrence that stands in none.
struct PmiCallout {
    EntityNumber number = 0;
    std::vector<EntityNumber> occurrences;
    /// Names from the one that speaks of the drawing to the most general: of the occurrences, of
    /// what they draw, of the callout.
    std::vector<std::string> names;
    std::string name;                       ///< how the file names it
    std::vector<EntityNumber> definitions;  ///< what it presents: records, aspects, properties
    std::optional<Placement> plane;         ///< in millimetres
    PmiDrawing drawing;
    bool hidden = false;
};

/// All of them, in file order, drawn. @p millimetresPerUnit holds where the file names no unit.
std::vector<PmiCallout> readCallouts(const ExchangeFile& file, double millimetresPerUnit);

}  // namespace kesview
