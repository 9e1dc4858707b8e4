#pragma once

/// @file
/// Notices Ctrl-C and termination while it lives, instead of ending the process.

namespace kesview {

/// Takes SIGINT and SIGTERM over, and gives them back at its end to whoever had them. A signal that
/// the process ignores stays ignored. Watches may overlap, also on several threads; a signal then
/// is seen by all of them.
class InterruptWatch {
public:
    /// Throws std::system_error where the system has no pipe left.
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Readable, for poll(), once a signal came; not to be read from.
    int Descriptor() const { return _descriptor; }

private:
    int _descriptor;
};

}  // namespace kesview
