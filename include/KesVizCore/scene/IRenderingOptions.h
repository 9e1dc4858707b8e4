#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>

namespace KesVizCore {

class IRenderingOptionsListener;

/// A list of those who want to hear that options change.
///
/// @par Ownership
/// Listeners are borrowed: each must outlive the list or be removed from it.
///
/// @par Errors
/// Adding may throw std::bad_alloc; the list then stays as it was.
///
/// @par Threads
/// None of its own: options are used on the thread of their view.
class KESVIZCORE_API IRenderingOptions {
public:
    virtual ~IRenderingOptions() = default;

    /// Appends @p listener. Null is ignored; who is added twice is told twice.
    virtual void AddListener(IRenderingOptionsListener* listener) = 0;
    /// Removes every entry of @p listener; null and strangers change nothing.
    virtual void RemoveListener(IRenderingOptionsListener* listener) = 0;
    /// The number of entries of all listeners together; @p listener is not looked at.
    virtual std::uint64_t GetNumberOfListeners(IRenderingOptionsListener* listener) = 0;
};

}  // namespace KesVizCore
