#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/TriangleType.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizPolygonLoop;

/// A part of a face: indices into the face's vertices, and the loops that bound it.
///
/// @par Ownership
/// Made by AVizPolygonLoader; owned by its face. It borrows its loops, which the host keeps and
/// destroys.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPolygon : public VizElement {
public:
    static std::string TypeID();  ///< "Polygon"

    VizPolygon(const VizPolygon& other);             ///< borrows the same loops
    VizPolygon& operator=(const VizPolygon& other);  ///< borrows the same loops

    std::string GetElementType() const override;
    ~VizPolygon() override;

    /// Unchecked; they count the face's vertices from 0.
    const std::vector<int>& GetIndices() const;
    /// Appends a copy of @p count indices; @p data may be null for none.
    void SetIndices(std::size_t count, const int* data);
    const std::vector<VizPolygonLoop*>& GetPolygonLoopList() const;  ///< in the order of adding
    /// Reserves room.
    void SetPolygonLoopCountHint(std::size_t count);
    /// Appends; null is ignored.
    void AddLoop(VizPolygonLoop* loop);
    TriangleType GetPolygonType() const;     ///< TriangleList at first
    void SetPolygonType(TriangleType type);  ///< any number

private:
    friend class AVizPolygonLoader;

    VizPolygon();

    std::vector<int> _indices;
    std::vector<VizPolygonLoop*> _loops;
    TriangleType _polygonType;
};

}  // namespace KesVizCore
