#include "drawing/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <png.h>
#include <random>
#include <string>

namespace kesview {
namespace {

class WritePngTest : public testing::Test {
protected:
    const support::TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.Path();
};

Image noise(int width, int height) {
    Image image{width, height, {}};
    std::mt19937 random(7);
    std::generate_n(std::back_inserter(image.pixels), 3 * width * height,
                    [&] { return std::uint8_t(random()); });
    return image;
}

Image readPng(const std::string& path) {
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_file(&header, path.c_str())) << header.message;
    EXPECT_EQ(header.format, png_uint_32(PNG_FORMAT_RGB));
    Image image{int(header.width), int(header.height), {}};
    image.pixels.resize(PNG_IMAGE_SIZE(header));
    EXPECT_TRUE(png_image_finish_read(&header, nullptr, image.pixels.data(), 0, nullptr));
    return image;
}

TEST_F(WritePngTest, WhatIsWrittenReadsBackEqual) {
    for (const Image& image : {noise(1, 1), noise(37, 21), noise(640, 2)}) {
        const std::string path = folder / "picture.png";
        writePng(image, path);
        const Image back = readPng(path);
        EXPECT_EQ(back.width, image.width);
        EXPECT_EQ(back.height, image.height);
        EXPECT_EQ(back.pixels, image.pixels);
    }
}

TEST_F(WritePngTest, AFileThatCannotBeWrittenIsAnError) {
    EXPECT_THROW(writePng(noise(2, 2), folder / "missing" / "picture.png"), std::runtime_error);
}

TEST_F(WritePngTest, AnImageWithPixelsTooFewIsRefusedAndTheOldFileStays) {
    const std::string path = folder / "picture.png";
    writePng(noise(3, 3), path);
    Image image = noise(4, 4);
    image.pixels.pop_back();
    EXPECT_THROW(writePng(image, path), std::runtime_error);
    EXPECT_THROW(writePng(Image{}, path), std::runtime_error);
    EXPECT_EQ(readPng(path).pixels, noise(3, 3).pixels);
}

}  // namespace
}  // namespace kesview
