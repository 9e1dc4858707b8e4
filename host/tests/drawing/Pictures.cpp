#include "drawing/Pictures.h"

namespace kesview {

Picture whiteGround() {
    Picture picture;
    picture.width = 200;
    picture.height = 100;
    picture.samples = 1;
    picture.camera.eye = {0, 0, 50};
    picture.camera.target = {0, 0, 0};
    picture.camera.up = {0, 1, 0};
    picture.camera.height = 100;
    return picture;
}

TriangleBatch rectangle(float left, float bottom, float right, float top, float z, Color color) {
    TriangleBatch batch;
    batch.color = color;
    batch.lit = false;
    batch.points = {left, bottom, z, right, bottom, z, right, top, z, left, top, z};
    batch.triangles = {0, 1, 2, 0, 2, 3};
    return batch;
}

LineBatch line(Vector from, Vector to, Color color, float width) {
    LineBatch batch;
    batch.color = color;
    batch.width = width;
    for (const Vector& end : {from, to}) {
        for (const double coordinate : end)
            batch.points.push_back(float(coordinate));
    }
    batch.starts = {0};
    return batch;
}

Color pixelAt(const Image& image, int x, int y) {
    const std::size_t first = 3 * std::size_t(y * image.width + x);
    return {image.pixels.at(first), image.pixels.at(first + 1), image.pixels.at(first + 2), 255};
}

int countInk(const Image& image, int left, int top, int right, int bottom) {
    int count = 0;
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x)
            count += pixelAt(image, x, y) != white;
    }
    return count;
}

int countInk(const Image& image) {
    return countInk(image, 0, 0, image.width, image.height);
}

}  // namespace kesview
