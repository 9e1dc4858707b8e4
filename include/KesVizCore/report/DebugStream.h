#pragma once

#include <KesVizCore/Export.h>

#include <ostream>
#include <streambuf>

namespace KesVizCore {

/// The stream buffer under dbg: hands each character to the debugger when the next one comes.
///
/// It holds one pending character. A new character first sends the pending one, in a call of its
/// own, and then takes its place, so that the debugger is always one character behind; a flush
/// sends the last. On a platform without a debugger's channel the standard error stream takes
/// the text, unbuffered.
///
/// @par Errors
/// No operation fails; what the debugger does not take is lost. A pending zero character shows
/// nothing, and so does what is pending when the buffer is destroyed.
///
/// @par Threads
/// One thread at a time.
class KESVIZCORE_API debugger_streambuf : public std::streambuf {
public:
    debugger_streambuf();

protected:
    /// Sends the pending character and keeps @p c, cut to a narrow character, in its place, also
    /// where it is the end-of-file value. Returns 0, never an error.
    int_type overflow(int_type c) override;
    /// Sends the pending character, after which none is pending. Returns 0.
    int sync() override;

private:
    char _pending[2];  // the pending character and a terminating zero
};

/// The stream of the library's diagnostics, which a host may write to as well.
///
/// It writes through one debugger_streambuf: the last character of a text is shown at the next
/// flush. It is ready before the static objects of whoever links the library are constructed,
/// and still there while they are destroyed. One thread at a time.
extern KESVIZCORE_API std::ostream dbg;

}  // namespace KesVizCore
