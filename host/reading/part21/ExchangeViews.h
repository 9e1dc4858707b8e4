#pragma once

/// @file
/// Saved views of an exchange file.

#include "document/Document.h"
#include "reading/part21/ExchangeFile.h"

#include <string>
#include <vector>

namespace kesview {

struct ExchangeView {
    EntityNumber number = 0;  ///< of the camera
    /// Without members; they are callouts and occurrences so far.
    SavedView view;
    std::vector<EntityNumber> items;
    std::size_t planeCount = 0;  ///< clipping planes in the file, of which the view holds one
    bool readable = true;        ///< false where the camera lacks its place or its volume
};

/// Every camera, in file order, but for repetitions: of cameras with one name that see the same,
/// the first stays and shows what any of them shows.
///
/// A camera looks from its projection point at its view plane. The point is told in the camera's
/// own frame; where it lies off that frame's axis but on it when taken as a point of the model,
/// it is one. Of a clipping plane the side away from the eye is kept.
std::vector<ExchangeView> readViews(const ExchangeFile& file, double millimetresPerUnit);

}  // namespace kesview
