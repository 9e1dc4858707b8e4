#pragma once

/// @file
/// The one polygon of a face, of the model or of an annotation.

#include "loading/LoaderCall.h"

#include <KesVizCore/model/AVizPolygonLoader.h>
#include <KesVizCore/model/VizPolygon.h>

#include <cstdint>
#include <vector>

namespace kesview {

/// Leaves the triangles that it loads empty.
class TrianglesLoader : public KesVizCore::AVizPolygonLoader {
public:
    explicit TrianglesLoader(std::vector<std::int32_t>& triangles) : _triangles(triangles) {}

protected:
    KesVizCore::VizElement* createAndFill() override {
        auto* const polygon = static_cast<KesVizCore::VizPolygon*>(makeOne());
        if (polygon != nullptr) {
            polygon->SetPolygonType(KesVizCore::IndexedTriangles);
            polygon->SetIndices(_triangles.size(), _triangles.data());
            release(_triangles);
        }
        return polygon;
    }

private:
    std::vector<std::int32_t>& _triangles;
};

}  // namespace kesview
