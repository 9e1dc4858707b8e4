#pragma once

/// @file
/// Annotations and saved views of an exchange file, complete but for what only the model's shapes
/// can tell.

#include "document/Document.h"
#include "reading/part21/ExchangeFile.h"
#include "reading/part21/Placement.h"
#include "reading/part21/PmiDrawing.h"

#include <optional>
#include <vector>

namespace kesview {

struct ExchangeAnnotation {
    /// Without id, links, drawing and plane.
    Annotation annotation;
    PmiDrawing drawing;
    std::optional<Placement> plane;
    std::vector<EntityNumber> geometry;  ///< faces, edges, solids, products that it applies to
    EntityNumber product = 0;            ///< the product definition that it stands on; 0 if unknown
};

struct ExchangePmiView {
    SavedView view;
    EntityNumber product = 0;  ///< that all its members stand on; 0 if none or several
};

/// Everything is told in millimetres in the frame of the annotated product.
struct ExchangePmi {
    std::vector<ExchangeAnnotation> annotations;
    std::vector<ExchangePmiView> views;
    std::vector<Finding> findings;
};

/// One annotation for each dimension, tolerance, datum and datum target, however often it is used
/// or drawn, and one for each drawing that presents none of them.
///
/// A datum of one letter that the file holds several times for the same geometry is one
/// annotation. A drawing that presents several records, as that of a composite tolerance does,
/// belongs to the first; the others name it under "DrawnWith".
///
/// @p millimetresPerUnit holds where the file names no unit.
ExchangePmi readExchangePmi(const ExchangeFile& file, double millimetresPerUnit);

}  // namespace kesview
