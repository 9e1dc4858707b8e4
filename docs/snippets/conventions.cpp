#include "Snippets.h"

#include <cstdio>

namespace snippets {

void conventions() {
    std::printf("--- conventions\n");
    float axis[3] = {0, 0, 1};
    float worldFromPart[16];
    viz::CreateRotationMatrixDegrees(axis, 90.0F, worldFromPart);  // right-handed
    worldFromPart[12] = 10;                                        // the translation: 12, 13, 14

    float point[3] = {1, 0, 0};
    viz::MatrixMultiplyPoint(point, worldFromPart, point);
    std::printf("%.1f, %.1f, %.1f\n", point[0], point[1], point[2]);  // 10.0, 1.0, 0.0
}

}  // namespace snippets
