#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <vector>

/// @file
/// Arithmetic on packed triples x, y, z of floats, shared by all elements that hold coordinates.

namespace KesVizCore {

/// Moves every whole triple of @p points in place; a trailing part of one stays.
///
/// @param targetFromSource 16 floats, column by column, with the translation at 12..14
void transformPoints(std::vector<float>& points, const float* targetFromSource);

/// The same without the translation.
void transformVectors(std::vector<float>& vectors, const float* targetFromSource);

/// Appends @p added to @p stored and writes the 6 extrema (min x, y, z, max x, y, z) of as many
/// points as @p added holds: its first, and then, from the second on, the first that are stored.
/// With less than one triple nothing happens.
void appendVertices(std::vector<float>& stored, float* extrema, const std::vector<float>& added);

/// Appends @p count values, with room reserved for that many in all. They may be values of
/// @p stored itself.
template <typename Value>
void appendValues(std::vector<Value>& stored, std::size_t count, const Value* data) {
    const std::less<const Value*> before;
    const bool own = !before(data, stored.data()) && before(data, stored.data() + stored.size());
    const std::vector<Value> copy(data, own ? data + count : data);  // growing would move them
    const Value* const source = own ? copy.data() : data;
    stored.reserve(count);
    stored.insert(stored.end(), source, source + count);
}

/// The same for @p count triples of floats.
inline void appendTriples(std::vector<float>& stored, std::size_t count, const float* data) {
    if (count > stored.max_size() / 3) {
        throw std::length_error("more triples than an array can hold");
    }
    appendValues(stored, 3 * count, data);
}

/// Reads a matrix that a host hands over in two dimensions as the 16 floats that it is.
inline const float* asArray(const float (*matrix)[4]) {
    return &matrix[0][0];
}

}  // namespace KesVizCore
