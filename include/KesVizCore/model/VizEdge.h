#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstdint>
#include <string>
#include <vector>

namespace KesVizCore {

/// A chain of straight lines that approximates an edge of the model.
///
/// @par Units and ranges
/// Vertices are triples x, y, z of floats in model units, one after the other; indices count
/// vertices. Extrema are 6 floats: min x, y, z, max x, y, z. All is stored unchecked.
///
/// @par Ownership
/// Made by AVizEdgeLoader; owned by the mesh, wire or annotation that holds it.
///
/// @par Errors
/// std::bad_alloc when memory runs out; nothing else fails. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizEdge : public VizElement {
public:
    /// How the edge is drawn: a number of the host's own.
    enum EdgeType : std::int32_t {};

    static std::string TypeID();  ///< "Edge"

    VizEdge(const VizEdge& other);             ///< member by member
    VizEdge& operator=(const VizEdge& other);  ///< member by member

    std::string GetElementType() const override;
    ~VizEdge() override;
    /// Moves the vertices by 16 floats, read column by column, with the translation at 12..14, and
    /// no division by a fourth coordinate; the extrema go on describing where they were.
    void ApplyTransform(float targetFromSource[4][4]) override;

    const std::vector<float>& GetVertices() const;  ///< x, y, z of each
    /// Appends @p vertices and works out the extrema of as many points as they hold.
    ///
    /// The points looked at, but for the first, are the first of all that are stored, so that on a
    /// second call they are the earlier ones. A trailing part of a triple is stored too. With less
    /// than one triple nothing happens.
    void SetVertices(const std::vector<float>& vertices);
    /// Filled by the loader alone (AVizEdgeLoader::setIndices).
    const std::vector<int>& GetIndices() const;
    /// Copies 6 floats, all 0 before the first SetVertices.
    void GetExtrema(float out[6]) const;
    EdgeType GetLineType() const;                            ///< 0 at first
    void SetLineType(EdgeType type);                         ///< any number
    std::wstring GetMechanicalID() const;                    ///< empty at first
    void SetMechanicalID(const std::wstring& mechanicalId);  ///< any text
    /// Makes the colour opaque; an element without a colour stays without.
    void RemoveTransparency();

private:
    friend class AVizEdgeLoader;

    VizEdge();

    std::vector<float> _vertices;
    std::vector<int> _indices;
    EdgeType _lineType;
    float _extrema[6];
    std::wstring _mechanicalId;
};

}  // namespace KesVizCore
