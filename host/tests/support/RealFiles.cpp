/// @file
#include "support/RealFiles.h"

#include <cstdlib>

namespace kesview::support {

std::string realFolder() {
    const char* const folder = std::getenv("KESVIEW_DATA");
    return folder == nullptr ? "" : folder;
}

std::string realFile(const std::string& name) {
    return realFolder() + "/" + name;
}

}  // namespace kesview::support
