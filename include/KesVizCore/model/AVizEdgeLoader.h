#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

#include <vector>

namespace KesVizCore {

class VizEdge;

/// Makes the edges (VizEdge) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizEdgeLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizEdge

    /// Replaces the indices of @p edge, which has no setter for them, by a copy; they count
    /// vertices and are not checked.
    static void setIndices(VizEdge& edge, const std::vector<int>& indices);
};

}  // namespace KesVizCore
