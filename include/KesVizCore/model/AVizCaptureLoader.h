#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>
#include <KesVizCore/model/VizCapture.h>

namespace KesVizCore {

/// Makes the captures (VizCapture) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizCaptureLoader : public AVizElementLoader {
protected:
    VizCapture* makeOne() override;  ///< a VizCapture
};

}  // namespace KesVizCore
