#pragma once

/// @file
/// Reads a CAD file in a process of its own, so that a reader that crashes, hangs or swallows all
/// memory costs that process and not this one.

#include "document/Document.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace kesview {

struct ReadOptions {
    bool withPmi = true;
    /// Without triangles and polylines, faces and edges are listed with no points.
    bool withTessellation = true;
    /// How far triangles may stray from the surface, as a fraction of a part's diagonal.
    double deflection = 0.001;
    double angle = 0.5;  ///< between neighbouring normals, in radians
    std::chrono::milliseconds timeLimit{600'000};
    std::uint64_t memoryLimit = 12ULL << 30;  ///< bytes of address space
};

enum class ReadFailure {
    Unreadable,     ///< there is no such file, or it may not be read
    UnknownFormat,  ///< not a kind of file that we read
    Damaged,        ///< of a kind that we read, but broken, or the reader crashed on it
    LimitReached,   ///< of time or memory
    Interrupted     ///< by Ctrl-C or a termination signal
};

/// What went wrong, for people, with one sentence of advice where there is any.
class ReadError : public std::runtime_error {
public:
    ReadError(ReadFailure failure, const std::string& message)
        : std::runtime_error(message), _failure(failure) {}
    ReadFailure Failure() const { return _failure; }

private:
    ReadFailure _failure;
};

/// Told what the reader is doing, and how far it is: 0 to 1.
using ReadProgress = std::function<void(const std::string& stage, double fraction)>;

/// The whole document, or a ReadError; never a part of it.
Document readFile(const std::string& path, const ReadOptions& options,
                  const ReadProgress& progress = {});

}  // namespace kesview
