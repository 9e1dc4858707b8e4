#include "platform/Platform.h"

#include <KesVizCore/report/DebugStream.h>

#include <new>

namespace KesVizCore {

namespace {

/// The one buffer of dbg. It stands in storage that nothing destroys, so that static objects may
/// write to dbg from their destructors.
debugger_streambuf* bufferOfDbg() {
    alignas(debugger_streambuf) static unsigned char storage[sizeof(debugger_streambuf)];
    return new (storage) debugger_streambuf();
}

}  // namespace

debugger_streambuf::debugger_streambuf() : _pending{'\0', '\0'} {}

debugger_streambuf::int_type debugger_streambuf::overflow(int_type c) {
    sync();
    _pending[0] = static_cast<char>(c);
    return 0;
}

int debugger_streambuf::sync() {
    platform::writeToDebugger(_pending);
    _pending[0] = '\0';
    return 0;
}

// In a static library the order of constructors is otherwise the linker's: this one comes first
// and its destructor last. Compilers that do not know the attribute pass over it.
[[gnu::init_priority(101)]] std::ostream dbg(bufferOfDbg());

}  // namespace KesVizCore
