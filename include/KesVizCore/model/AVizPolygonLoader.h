#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizPolygon;

/// Makes the polygons (VizPolygon) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizPolygonLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;
};

}  // namespace KesVizCore
