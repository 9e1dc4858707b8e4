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
/// Made by AVizPolygonLoader; owned by its face. It borrows its loops.
///
/// @par Errors
/// No operation fails, but for the memory that runs out.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPolygon : public VizElement {
public:
    static std::string TypeID();

    VizPolygon(const VizPolygon& other);
    VizPolygon& operator=(const VizPolygon& other);

    std::string GetElementType() const override;
    ~VizPolygon() override;

    const std::vector<int>& GetIndices() const;
    /// Appends @p count indices.
    void SetIndices(std::size_t count, const int* data);
    const std::vector<VizPolygonLoop*>& GetPolygonLoopList() const;
    /// Reserves room.
    void SetPolygonLoopCountHint(std::size_t count);
    /// Appends; null is ignored.
    void AddLoop(VizPolygonLoop* loop);
    TriangleType GetPolygonType() const;
    void SetPolygonType(TriangleType type);

private:
    friend class AVizPolygonLoader;

    VizPolygon();

    std::vector<int> _indices;
    std::vector<VizPolygonLoop*> _loops;
    TriangleType _polygonType;
};

}  // namespace KesVizCore
