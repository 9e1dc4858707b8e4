#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

/// @name The allow-throw switch
/// One flag for the whole process, false at load. While it is true, misuse of a Stopwatch
/// throws; while it is false, misuse is silent. Nothing guards the flag: set it while no other
/// thread uses the library.
/// @{
KESVIZCORE_API void SetAllowThrow(const bool& allow);  ///< from the next misuse on
KESVIZCORE_API bool GetAllowThrow();                   ///< false at load
/// @}

}  // namespace KesVizCore
