#include "drawing/vtk/EglContext.h"

#include "drawing/Drawing.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace kesview {
namespace {

/// Displays that need no window system, the best first: Mesa's own, then graphics cards without
/// a screen, then whatever the driver takes for its default.
std::vector<EGLDisplay> candidates() {
    std::vector<EGLDisplay> displays;
    displays.push_back(
        eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));

    const auto queryDevices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(
        reinterpret_cast<void*>(eglGetProcAddress("eglQueryDevicesEXT")));
    std::array<EGLDeviceEXT, 16> devices = {};
    EGLint count = 0;
    if (queryDevices && queryDevices(EGLint(devices.size()), devices.data(), &count)) {
        for (EGLint i = 0; i < count; ++i)
            displays.push_back(
                eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[std::size_t(i)], nullptr));
    }
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

EGLConfig chooseConfig(EGLDisplay display, EGLint surfaceType) {
    const std::array<EGLint, 5> wanted = {EGL_SURFACE_TYPE, surfaceType, EGL_RENDERABLE_TYPE,
                                          EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted.data(), &config, 1, &count) || count == 0)
        return nullptr;
    return config;
}

}  // namespace

EglContext::EglContext() {
    setenv("EGL_LOG_LEVEL", "fatal", 0);  // what fails is told by the error, once
    for (EGLDisplay display : candidates()) {
        if (display != EGL_NO_DISPLAY && open(display))
            return;
    }
    throw DrawError(
        "Nothing can be drawn here, no driver makes an off-screen context. Drawing needs "
        "libegl-mesa0 and libgl1-mesa-dri: apt-get install libegl-mesa0 libgl1-mesa-dri");
}

EglContext::~EglContext() {
    close();
}

bool EglContext::open(void* display) {
    if (!eglInitialize(display, nullptr, nullptr))
        return false;
    _display = display;

    EGLConfig config = chooseConfig(display, EGL_PBUFFER_BIT);
    if (config) {
        const std::array<EGLint, 5> onePixel = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
        _surface = eglCreatePbufferSurface(display, config, onePixel.data());
    } else {
        config = chooseConfig(display, EGL_DONT_CARE);
    }
    const std::array<EGLint, 7> version = {EGL_CONTEXT_MAJOR_VERSION,
                                           3,
                                           EGL_CONTEXT_MINOR_VERSION,
                                           2,
                                           EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                           EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                           EGL_NONE};
    if (config && eglBindAPI(EGL_OPENGL_API))
        _context = eglCreateContext(display, config, EGL_NO_CONTEXT, version.data());
    if (_context && eglMakeCurrent(display, _surface, _surface, _context))
        return true;
    close();
    return false;
}

void EglContext::close() {
    if (!_display)
        return;
    // The display is shared by all contexts of the process, so its connection stays.
    if (IsCurrent())
        eglMakeCurrent(_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (_context)
        eglDestroyContext(_display, _context);
    if (_surface)
        eglDestroySurface(_display, _surface);
    _display = _context = _surface = nullptr;
}

void EglContext::MakeCurrent() const {
    eglMakeCurrent(_display, _surface, _surface, _context);
}

bool EglContext::IsCurrent() const {
    return eglGetCurrentContext() == _context;
}

}  // namespace kesview
