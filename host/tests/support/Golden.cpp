/// @file
#include "support/Golden.h"

#include "support/FileContent.h"

#include <cstdlib>

namespace kesview::support {

bool writesGolden() {
    return std::getenv("KESVIEW_WRITE_GOLDEN") != nullptr;
}

std::string goldenText(const std::string& path, const std::string& actual) {
    if (writesGolden()) {
        writeFile(path, actual);
    }
    return contentOfFile(path);
}

}  // namespace kesview::support
