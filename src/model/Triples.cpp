#include "model/Triples.h"

#include <algorithm>
#if defined(__x86_64__) || defined(_M_X64)
#include <xmmintrin.h>
#endif

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

constexpr std::ptrdiff_t kManyFloats = 48;  // fewer are quicker one by one

/// The least and the greatest coordinates of a first point and further ones. A coordinate that is
/// NaN stays where it is the first and is passed over later on.
class Extrema {
public:
    explicit Extrema(const float* first)
        : _first{first[0], first[1], first[2]},
          _low{first[0], first[1], first[2]},
          _high{first[0], first[1], first[2]} {}

    /// Takes whole triples from @p begin to @p end.
    void Include(const float* begin, const float* end) {
        if (end - begin >= kManyFloats) {
            begin = includeQuads(begin, end);
        }
        for (; begin < end; begin += 3) {
            includePoint(begin, begin);
        }
    }

    /// Of zeros of both signs, which are equal, the first counts: quads are looked at in another
    /// order. @p points are all that were included.
    void RestoreZeros(const float* points) {
        for (int axis = 0; axis < 3; ++axis) {
            float& extreme = _low[axis] == 0.0F ? _low[axis] : _high[axis];
            if (extreme == 0.0F && _first[axis] != 0.0F) {
                const float* zero = points + axis;
                while (*zero != 0.0F) {
                    zero += 3;
                }
                extreme = *zero;
            }
        }
    }

    void Write(float* extrema) const {
        for (int axis = 0; axis < 3; ++axis) {
            extrema[axis] = _low[axis];
            extrema[axis + 3] = _high[axis];
        }
    }

private:
    void includePoint(const float* low, const float* high) {
        for (int axis = 0; axis < 3; ++axis) {
            _low[axis] = _low[axis] > low[axis] ? low[axis] : _low[axis];
            _high[axis] = high[axis] > _high[axis] ? high[axis] : _high[axis];
        }
    }

    /// Takes four triples at a time, as three groups of four floats, and returns where it stops.
    const float* includeQuads(const float* begin, const float* end);

    float _first[3];
    float _low[3];
    float _high[3];
};

#if defined(__x86_64__) || defined(_M_X64)
const float* Extrema::includeQuads(const float* begin, const float* end) {
    const auto spread = [](const float* v, __m128* groups) {
        groups[0] = _mm_setr_ps(v[0], v[1], v[2], v[0]);
        groups[1] = _mm_setr_ps(v[1], v[2], v[0], v[1]);
        groups[2] = _mm_setr_ps(v[2], v[0], v[1], v[2]);
    };
    __m128 low[3];
    __m128 high[3];
    spread(_low, low);
    spread(_high, high);
    for (; end - begin >= 12; begin += 12) {
        for (int group = 0; group < 3; ++group) {
            // The second operand is kept where both are equal or one is NaN.
            const __m128 coordinates = _mm_loadu_ps(begin + 4 * group);
            low[group] = _mm_min_ps(coordinates, low[group]);
            high[group] = _mm_max_ps(coordinates, high[group]);
        }
    }

    float lows[12];
    float highs[12];
    for (int group = 0; group < 3; ++group) {
        _mm_storeu_ps(lows + 4 * group, low[group]);
        _mm_storeu_ps(highs + 4 * group, high[group]);
    }
    for (int place = 0; place < 12; place += 3) {
        includePoint(lows + place, highs + place);
    }
    return begin;
}
#else
const float* Extrema::includeQuads(const float* begin, const float* /*end*/) {
    return begin;
}
#endif

}  // namespace

void transformPoints(std::vector<float>& points, const float* targetFromSource) {
    transform<true>(points, targetFromSource);
}

void transformVectors(std::vector<float>& vectors, const float* targetFromSource) {
    transform<false>(vectors, targetFromSource);
}

void appendVertices(std::vector<float>& stored, float* extrema, const std::vector<float>& added) {
    const std::size_t count = added.size();
    if (count < 3) {
        return;
    }
    Extrema range(added.data());

    // Piece by piece, so that each is looked at while it is near, unless the memory may move.
    const std::size_t piece = stored.empty() ? 3072 : count;
    stored.reserve(count);
    for (std::size_t begin = 0; begin < count; begin += piece) {
        const std::size_t end = std::min(begin + piece, count);
        appendValues(stored, end - begin, added.data() + begin);
        const std::size_t lookedAt = std::max<std::size_t>(begin, 3);
        range.Include(stored.data() + lookedAt, stored.data() + end / 3 * 3);
    }
    range.RestoreZeros(stored.data() + 3);
    range.Write(extrema);
}

}  // namespace KesVizCore
