#include "drawing/Drawing.h"
#include "drawing/DrawingModule.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>
#include <vector>

namespace kesview {
namespace {

namespace fs = std::filesystem;

constexpr const char* moduleName = "kesview_vtk.so";
constexpr const char* remedy =
    "Drawing needs VTK 9.1, EGL and a driver: apt-get install libvtk9.1 libegl1 libegl-mesa0 "
    "libgl1-mesa-dri";

std::vector<fs::path> candidates() {
    const char* named = std::getenv("KESVIEW_DRAWING_MODULE");
    if (named && *named)
        return {named};
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    return {folder / moduleName, folder.parent_path() / KESVIEW_MODULE_FOLDER / moduleName,
            folder.parent_path() / "lib/kesview" / moduleName,
            folder.parent_path() / "lib" / moduleName};
}

fs::path findModule() {
    std::error_code error;
    for (const fs::path& path : candidates()) {
        if (fs::exists(path, error))
            return path;
    }
    throw DrawError("The module that draws is missing, " + candidates().front().string() +
                    ": build the target kesview_vtk, or install kesview again");
}

/// Never unloaded: what VTK registers with the process has to stay.
void* load(const fs::path& path) {
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (module)
        return module;
    const char* reason = dlerror();
    throw DrawError("The module that draws cannot be loaded, " +
                    std::string(reason ? reason : path.string()) + ". " + remedy);
}

}  // namespace

std::unique_ptr<Drawing> makeDrawing() {
    const fs::path path = findModule();
    void* maker = dlsym(load(path), "kesviewMakeDrawing");
    if (!maker)
        throw DrawError("The module that draws is of another version, " + path.string() +
                        ": install kesview again");
    return std::unique_ptr<Drawing>(reinterpret_cast<decltype(&kesviewMakeDrawing)>(maker)());
}

}  // namespace kesview
