#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizEdge;

/// A loop of the boundary of a polygon: edges in order.
///
/// @par Ownership
/// Made by AVizPolygonLoopLoader and owned by the host, which destroys it: polygons borrow it. It
/// borrows its edges, which whoever holds them must keep longer.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizPolygonLoop : public VizElement {
public:
    static std::string TypeID();  ///< "PolygonLoop"

    VizPolygonLoop(const VizPolygonLoop& other);             ///< borrows the same edges
    VizPolygonLoop& operator=(const VizPolygonLoop& other);  ///< borrows the same edges

    std::string GetElementType() const override;
    ~VizPolygonLoop() override;

    const std::vector<VizEdge*>& GetEdges() const;  ///< in the order of adding
    /// Reserves room.
    void SetEdgeCountHint(std::size_t count);
    /// Appends; null is ignored.
    void AddEdge(VizEdge* edge);

private:
    friend class AVizPolygonLoopLoader;

    VizPolygonLoop();

    std::vector<VizEdge*> _edges;
};

}  // namespace KesVizCore
