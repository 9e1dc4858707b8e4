#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizFace;

/// Makes the faces (VizFace) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizFaceLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;
};

}  // namespace KesVizCore
