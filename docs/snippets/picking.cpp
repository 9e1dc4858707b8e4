#include "Snippets.h"

#include <cstdio>

namespace snippets {

namespace {

void hit() {
    const float root[3] = {10, 10, 20};
    const float direction[3] = {0, 0, -2};  // any length but 0
    float point[3];
    float distance = 0;

    const float corners[3][3] = {{0, 0, 6}, {60, 0, 6}, {0, 40, 6}};
    if (viz::RayHitsTriangle(corners[0], corners[1], corners[2], root, direction, point,
                             distance)) {
        std::printf("triangle: %.1f model units away\n", distance);
    }
    const float ends[2][3] = {{0, 10.5F, 6}, {60, 10.5F, 6}};
    const float aperture = 1;  // how far beside the ray still counts
    if (viz::RayHitsLineSegment(ends[0], ends[1], aperture, root, direction, point, distance)) {
        std::printf("segment: %.1f lengths of the direction away\n", distance);
    }
}

}  // namespace

void picking() {
    std::printf("--- picking\n");
    hit();
}

}  // namespace snippets
