#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizPolygonLoop;

/// Makes the polygon loops (VizPolygonLoop) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizPolygonLoopLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizPolygonLoop
};

}  // namespace KesVizCore
