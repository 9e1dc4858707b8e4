#include "model/Triples.h"

#include <algorithm>
#include <cstring>

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

/// A coordinate that is NaN stays where it is the first, and is passed over later on.
inline void widen(float* low, float* high, const float* otherLow, const float* otherHigh) {
    for (int axis = 0; axis < 3; ++axis) {
        low[axis] = low[axis] > otherLow[axis] ? otherLow[axis] : low[axis];
        high[axis] = otherHigh[axis] > high[axis] ? otherHigh[axis] : high[axis];
    }
}

/// Widens the extrema by four triples at a time, as three vectors of four floats, where the
/// compiler has such; returns where it stops.
#ifdef __GNUC__
const float* widenByQuads(float* low, float* high, const float* begin, const float* end) {
    using Quad = float __attribute__((vector_size(16)));  // compared and chosen lane by lane
    float lows[12];
    float highs[12];
    for (int place = 0; place < 12; ++place) {
        lows[place] = low[place % 3];
        highs[place] = high[place % 3];
    }
    Quad lowQuads[3];
    Quad highQuads[3];
    std::memcpy(lowQuads, lows, sizeof lows);
    std::memcpy(highQuads, highs, sizeof highs);
    for (; end - begin >= 12; begin += 12) {
        for (std::ptrdiff_t quad = 0; quad < 3; ++quad) {
            Quad coordinates;
            std::memcpy(&coordinates, begin + 4 * quad, sizeof coordinates);
            lowQuads[quad] = coordinates < lowQuads[quad] ? coordinates : lowQuads[quad];
            highQuads[quad] = coordinates > highQuads[quad] ? coordinates : highQuads[quad];
        }
    }
    std::memcpy(lows, lowQuads, sizeof lows);
    std::memcpy(highs, highQuads, sizeof highs);
    for (int place = 0; place < 12; place += 3) {
        widen(low, high, lows + place, highs + place);
    }
    return begin;
}
#else
const float* widenByQuads(float* /*low*/, float* /*high*/, const float* begin,
                          const float* /*end*/) {
    return begin;
}
#endif

/// Stores @p added in an empty array and widens the extrema, which begin as the first point: piece
/// by piece, so that each is looked at while it is near.
void storeMany(std::vector<float>& stored, float* low, float* high,
               const std::vector<float>& added) {
    constexpr std::size_t kPiece = 3072;
    const float* const data = added.data();
    stored.reserve(added.size());
    for (std::size_t begin = 0; begin < added.size(); begin += kPiece) {
        const std::size_t end = std::min(begin + kPiece, added.size());
        stored.insert(stored.end(), data + begin, data + end);
        const float* const lastTripleEnd = data + end / 3 * 3;
        const float* triple = widenByQuads(low, high, data + begin, lastTripleEnd);
        for (; triple < lastTripleEnd; triple += 3) {
            widen(low, high, triple, triple);
        }
    }

    // Of zeros of both signs, which are equal, the first counts; quads have another order.
    for (int axis = 0; axis < 3; ++axis) {
        float& extreme = low[axis] == 0.0F ? low[axis] : high[axis];
        if (extreme == 0.0F) {
            const float* zero = data + axis;
            while (*zero != 0.0F) {
                zero += 3;
            }
            extreme = *zero;
        }
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
    if (stored.empty() && points >= 16) {
        storeMany(stored, low, high, added);
    } else {
        appendValues(stored, added.size(), added.data());
        for (std::size_t point = 1; point < points; ++point) {
            const float* const coordinates = stored.data() + 3 * point;
            widen(low, high, coordinates, coordinates);
        }
    }
    for (int axis = 0; axis < 3; ++axis) {
        extrema[axis] = low[axis];
        extrema[axis + 3] = high[axis];
    }
}

}  // namespace KesVizCore
