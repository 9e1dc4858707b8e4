#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizWire;

/// Makes the wires (VizWire) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizWireLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizWire
};

}  // namespace KesVizCore
