#pragma once

/// @file
/// A context of OpenGL that needs no display: no window system, no screen.

namespace kesview {

/// An off-screen context, released with it.
///
/// Threads: it is current in at most one thread at a time.
class EglContext {
public:
    /// Throws DrawError with the remedy where no driver can make one.
    EglContext();
    ~EglContext();
    EglContext(const EglContext&) = delete;
    EglContext& operator=(const EglContext&) = delete;

    void MakeCurrent() const;
    bool IsCurrent() const;

private:
    bool open(void* display);
    void close();

    void* _display = nullptr;
    void* _context = nullptr;
    void* _surface = nullptr;  ///< one pixel, for drivers that want a surface; may stay null
};

}  // namespace kesview
