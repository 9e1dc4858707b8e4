#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// What kind of annotation a PMI is, or to which group of kinds it belongs.
///
/// @par Units and ranges
/// The numbers are the host's own; all 0 and the name empty at first.
///
/// @par Errors
/// std::bad_alloc when memory runs out for a copy of the name.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API VizPMIType {
    std::int32_t Code = 0;     ///< a code of the type
    std::string Name;          ///< what users call the kind
    std::int32_t Number2 = 0;  ///< carried along for the host
};

}  // namespace KesVizCore
