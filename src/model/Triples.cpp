#include "model/Triples.h"

namespace KesVizCore {

namespace {

/// The rows of a matrix, read once, so that the loop keeps them in registers.
struct Rows {
    explicit Rows(const float* m)
        : x{m[0], m[4], m[8], m[12]}, y{m[1], m[5], m[9], m[13]}, z{m[2], m[6], m[10], m[14]} {}

    float x[4];
    float y[4];
    float z[4];
};

template <bool translates>
void transform(std::vector<float>& triples, const float* matrix) {
    const Rows rows(matrix);
    const std::size_t end = triples.size() / 3 * 3;
    float* const data = triples.data();
    const auto product = [](const float* row, float x, float y, float z) {
        const float turned = row[0] * x + row[1] * y + row[2] * z;
        return translates ? turned + row[3] : turned;
    };
    for (std::size_t place = 0; place < end; place += 3) {
        const float x = data[place];
        const float y = data[place + 1];
        const float z = data[place + 2];
        data[place] = product(rows.x, x, y, z);
        data[place + 1] = product(rows.y, x, y, z);
        data[place + 2] = product(rows.z, x, y, z);
    }
}

}  // namespace

void transformPoints(std::vector<float>& points, const float* targetFromSource) {
    transform<true>(points, targetFromSource);
}

void transformVectors(std::vector<float>& vectors, const float* targetFromSource) {
    transform<false>(vectors, targetFromSource);
}

void appendVertices(std::vector<float>& stored, float* extrema, const std::vector<float>& added) {
    const std::size_t points = added.size() / 3;
    if (points == 0) {
        return;
    }
    float low[3] = {added[0], added[1], added[2]};
    float high[3] = {added[0], added[1], added[2]};
    appendValues(stored, added.size(), added.data());
    for (std::size_t point = 1; point < points; ++point) {
        const float* const coordinates = stored.data() + 3 * point;
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = low[axis] > coordinates[axis] ? coordinates[axis] : low[axis];
            high[axis] = coordinates[axis] > high[axis] ? coordinates[axis] : high[axis];
        }
    }
    for (int axis = 0; axis < 3; ++axis) {
        extrema[axis] = low[axis];
        extrema[axis + 3] = high[axis];
    }
}

}  // namespace KesVizCore
