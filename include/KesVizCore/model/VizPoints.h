#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <string>
#include <vector>

namespace KesVizCore {

/// A list of points.
///
/// @par Units and ranges
/// As for VizEdge.
///
/// @par Ownership
/// Made by AVizPointsLoader; owned by the point set that holds it.
///
/// @par Errors
/// std::bad_alloc when memory runs out; nothing else fails. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPoints : public VizElement {
public:
    static std::string TypeID();  ///< "Points"

    VizPoints(const VizPoints& other);             ///< member by member
    VizPoints& operator=(const VizPoints& other);  ///< member by member

    std::string GetElementType() const override;
    ~VizPoints() override;
    /// As VizEdge::ApplyTransform.
    void ApplyTransform(float targetFromSource[4][4]) override;

    const std::vector<float>& GetVertices() const;  ///< x, y, z of each
    /// As VizEdge::SetVertices.
    void SetVertices(const std::vector<float>& vertices);
    const std::vector<int>& GetIndices() const;  ///< empty unless the loader filled them
    /// Does nothing: indices come from the loader alone (AVizPointsLoader::setIndices).
    void SetIndices(const std::vector<int>& indices);
    /// Copies 6 floats, all 0 before the first SetVertices.
    void GetExtrema(float out[6]) const;
    /// Makes the colour opaque; an element without a colour stays without.
    void RemoveTransparency();

private:
    friend class AVizPointsLoader;

    VizPoints();

    std::vector<float> _vertices;
    std::vector<int> _indices;
    float _extrema[6];
};

}  // namespace KesVizCore
