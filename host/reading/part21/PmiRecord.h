#pragma once

/// @file
/// What one annotation of an exchange file means.

#include "document/Document.h"
#include "reading/part21/ExchangeFile.h"

#include <map>
#include <string>
#include <vector>

namespace kesview {

/// A dimension, tolerance, datum or datum target. Numbers among the attributes are in millimetres
/// and radians; the text is in the units that the file is written in.
struct PmiRecord {
    EntityNumber number = 0;
    AnnotationKind kind = AnnotationKind::Other;
    std::string type;
    std::int32_t typeCode = 0;
    std::string label;
    std::string text;
    std::map<std::string, std::string> attributes;
    std::vector<EntityNumber> targets;  ///< aspects, shapes or dimensions that it applies to
    std::vector<EntityNumber> datums;   ///< instances of DATUM, in the order of precedence
    /// Records that are drawn with this one inside where it has no drawing of its own: the upper
    /// segment of a composite tolerance, the targets of a datum.
    std::vector<EntityNumber> drawnWith;
};

}  // namespace kesview
