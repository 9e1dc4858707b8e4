#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizView;

/// Makes the views (VizView) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizViewLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizView
};

}  // namespace KesVizCore
