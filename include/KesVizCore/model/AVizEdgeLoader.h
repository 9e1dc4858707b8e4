#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

#include <vector>

namespace KesVizCore {

class VizEdge;

/// Makes the edges (VizEdge) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizEdgeLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;

    /// Replaces the indices of @p edge, which has no setter for them.
    static void setIndices(VizEdge& edge, const std::vector<int>& indices);
};

}  // namespace KesVizCore
