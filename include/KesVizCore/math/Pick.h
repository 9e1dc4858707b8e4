#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RenderId.h>

#include <cstdint>

namespace KesVizCore {

/// A record of one picked thing, carried for the host.
///
/// The library creates, copies and destroys it and reads none of its fields: what they mean is
/// settled by the host that fills them.
///
/// @par Units and ranges
/// The host's; any number is stored unchecked.
///
/// @par Errors
/// None but std::bad_alloc, when the render id cannot be copied.
///
/// @par Threads
/// A plain value: many threads may read one, a writer needs it to itself.
struct KESVIZCORE_API Pick {
    /// All zero, with an empty render id.
    Pick() = default;
    /// Zero and empty but for the first three fields.
    Pick(int number, float value1, float value2) : Number(number), Value1(value1), Value2(value2) {}

    std::int32_t Number = 0;               ///< a number of the host's own
    float Value1 = 0.0F;                   ///< a number of the host's own
    float Value2 = 0.0F;                   ///< a number of the host's own
    RenderId Id;                           ///< a path of the host's choice, as of the picked node
    double Position[3] = {0.0, 0.0, 0.0};  ///< 3 numbers of the host's own, as of the picked point
};

}  // namespace KesVizCore
