#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

#include <vector>

namespace KesVizCore {

class VizPoints;

/// Makes the lists of points (VizPoints) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizPointsLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;

    /// Replaces the indices of @p points, which has no setter for them.
    static void setIndices(VizPoints& points, const std::vector<int>& indices);
};

}  // namespace KesVizCore
