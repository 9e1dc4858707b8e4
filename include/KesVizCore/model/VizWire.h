#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/VizElement.h>

#include <cstddef>
#include <string>
#include <vector>

namespace KesVizCore {

class VizEdge;

/// A chain of edges that bounds no face.
///
/// @par Ownership
/// Made by AVizWireLoader; owned by its container. It owns its edges, which a copy shares: do not
/// destroy both.
///
/// @par Errors
/// std::bad_alloc when memory runs out, std::length_error for a count beyond what a vector can
/// hold; nothing else fails.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizWire : public VizElement {
public:
    static std::string TypeID();  ///< "Wire"

    VizWire(const VizWire& other);             ///< shares the edges
    VizWire& operator=(const VizWire& other);  ///< drops its own edges without destroying them

    std::string GetElementType() const override;
    ~VizWire() override;

    const std::vector<VizEdge*>& GetEdges() const;  ///< in the order of adding
    /// Reserves room.
    void SetEdgeCountHint(std::size_t count);
    /// Appends and takes over; null is stored too.
    void AddEdge(VizEdge* edge);

private:
    friend class AVizWireLoader;

    VizWire();

    std::vector<VizEdge*> _edges;
};

}  // namespace KesVizCore
