#include "document/WriteFile.h"
#include "drawing/Drawing.h"

#include <png.h>
#include <stdexcept>
#include <string>

namespace kesview {
namespace {

std::string encode(const Image& image) {
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    header.width = png_uint_32(image.width);
    header.height = png_uint_32(image.height);
    header.format = PNG_FORMAT_RGB;
    header.flags = PNG_IMAGE_FLAG_FAST;

    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(header), '\0');
    png_alloc_size_t size = bytes.size();
    if (!png_image_write_to_memory(&header, bytes.data(), &size, 0, image.pixels.data(), 0,
                                   nullptr))
        throw std::runtime_error(std::string("The PNG cannot be made: ") + header.message);
    bytes.resize(size);
    return bytes;
}

}  // namespace

void writePng(const Image& image, const std::string& path) {
    if (image.width < 1 || image.height < 1 ||
        image.pixels.size() != 3 * std::size_t(image.width) * std::size_t(image.height))
        throw std::runtime_error(
            "The PNG cannot be made: the image has not 3 bytes for each pixel");
    writeWhole(path, encode(image));
}

}  // namespace kesview
