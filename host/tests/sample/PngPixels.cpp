#include "PngPixels.h"

#include <cstdlib>
#include <png.h>

namespace kesview::support {

Image readPng(const std::string& path) {
    png_image file = {};
    file.version = PNG_IMAGE_VERSION;
    Image image;
    if (png_image_begin_read_from_file(&file, path.c_str()) == 0) {
        return image;
    }
    file.format = PNG_FORMAT_RGB;
    image.width = static_cast<int>(file.width);
    image.height = static_cast<int>(file.height);
    image.pixels.resize(PNG_IMAGE_SIZE(file));
    if (png_image_finish_read(&file, nullptr, image.pixels.data(), 0, nullptr) == 0) {
        image.pixels.clear();
    }
    return image;
}

double shareThatDiffers(const Image& a, const Image& b, int limit) {
    if (a.width != b.width || a.height != b.height || a.pixels.empty() ||
        a.pixels.size() != b.pixels.size()) {
        return 1;
    }
    std::size_t different = 0;
    for (std::size_t pixel = 0; pixel < a.pixels.size(); pixel += 3) {
        bool differs = false;
        for (std::size_t at = pixel; at < pixel + 3; ++at) {
            differs = differs || std::abs(int(a.pixels[at]) - int(b.pixels[at])) > limit;
        }
        different += differs ? 1U : 0U;
    }
    return 3 * static_cast<double>(different) / static_cast<double>(a.pixels.size());
}

}  // namespace kesview::support
