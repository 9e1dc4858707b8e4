#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizFace;

/// Makes the faces (VizFace) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizFaceLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizFace
};

}  // namespace KesVizCore
