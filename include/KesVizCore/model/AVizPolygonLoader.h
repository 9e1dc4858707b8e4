#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizPolygon;

/// Makes the polygons (VizPolygon) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizPolygonLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizPolygon
};

}  // namespace KesVizCore
