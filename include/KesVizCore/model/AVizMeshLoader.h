#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizMesh;

/// Makes the meshes (VizMesh) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizMeshLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizMesh
};

}  // namespace KesVizCore
