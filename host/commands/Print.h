#pragma once

/// @file
/// Writes a verb's result to the data stream, in the form that was asked for.

#include "commands/Options.h"
#include "commands/Streams.h"

#include <ostream>

namespace kesview {

/// toText and toJson of @p result stand beside its struct.
template <typename Result>
void print(const Result& result, OutputFormat format, Streams& streams) {
    streams.out << (format == OutputFormat::Json ? toJson(result) : toText(result));
}

}  // namespace kesview
