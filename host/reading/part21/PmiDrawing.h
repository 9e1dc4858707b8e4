#pragma once

/// @file
/// How an exchange file draws one annotation.

#include "reading/part21/ExchangeGeometry.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kesview {

/// Lines, filled areas and texts in millimetres, in the frame of the annotated product.
struct PmiDrawing {
    struct Area {
        std::vector<Vector> points;
        std::vector<std::int32_t> triangles;  ///< three indices of points each
    };

    std::vector<std::vector<Vector>> lines;
    std::vector<Area> areas;
    std::vector<PlacedText> texts;
    std::optional<Color> color;
    std::map<std::string, std::uint64_t> unread;  ///< what could not be drawn: type and count

    bool IsEmpty() const { return lines.empty() && areas.empty() && texts.empty(); }
};

/// Adds what the annotation occurrence @p number draws to @p drawing. Its colour is the first one.
void drawOccurrence(const ExchangeGeometry& geometry, const ExchangeFile& file, EntityNumber number,
                    PmiDrawing& drawing);

/// True of annotation occurrences of every kind, but not of annotation planes.
bool isOccurrence(const ExchangeInstance& instance);

}  // namespace kesview
