#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

#include <vector>

namespace KesVizCore {

class VizPoints;

/// Makes the lists of points (VizPoints) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizPointsLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizPoints

    /// Replaces the indices of @p points, whose setter does nothing, by a copy; they count vertices
    /// and are not checked.
    static void setIndices(VizPoints& points, const std::vector<int>& indices);
};

}  // namespace KesVizCore
