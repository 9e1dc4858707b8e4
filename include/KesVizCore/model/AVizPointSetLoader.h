#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizPointSet;

/// Makes the point sets (VizPointSet) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizPointSetLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizPointSet
};

}  // namespace KesVizCore
