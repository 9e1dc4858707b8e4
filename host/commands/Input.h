#pragma once

/// @file
/// Reads the file that a verb works on.

#include "commands/Console.h"
#include "commands/Options.h"
#include "commands/Tools.h"
#include "document/Document.h"

#include <cstdint>

namespace kesview {

enum class Needs : std::int32_t {
    Structure,  ///< names, places, faces and edges without points
    Pmi,        ///< structure, annotations and views
    Everything  ///< with points and triangles as well
};

/// Tells progress and time; what reading lost is said in the log, errors and warnings at once,
/// notes with --verbose. Throws ReadError.
Document readDocument(const CommonOptions& options, Needs needs, const Tools& tools,
                      Console& console);

/// The same without a word on what was lost, for verbs whose data says it.
Document readQuietly(const CommonOptions& options, Needs needs, const Tools& tools,
                     Console& console);

}  // namespace kesview
