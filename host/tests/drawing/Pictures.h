#pragma once

/// @file
/// Pictures of known scenes, and what to ask of the image.

#include "view/Picture.h"

namespace kesview {

/// 200 x 100 pixels, each 1 mm, of a white ground seen along -z: pixel (x, y) shows the square
/// from x - 100 to x - 99 and from 50 - y to 49 - y. One sample for each pixel.
Picture whiteGround();

/// An upright rectangle in its own colour at every angle, @p z above the ground.
TriangleBatch rectangle(float left, float bottom, float right, float top, float z, Color color);

LineBatch line(Vector from, Vector to, Color color, float width);

Color pixelAt(const Image& image, int x, int y);

/// How many pixels inside the window, its right and lower ends not counted, are not white.
int countInk(const Image& image, int left, int top, int right, int bottom);
int countInk(const Image& image);

constexpr Color white = {255, 255, 255, 255};
constexpr Color red = {255, 0, 0, 255};
constexpr Color green = {0, 255, 0, 255};
constexpr Color blue = {0, 0, 255, 255};
constexpr Color black = {0, 0, 0, 255};

}  // namespace kesview
