#pragma once

/// @file
/// Carries a document from one process to another as bytes: a magic word and a version, then every
/// field. The order of bytes is the machine's own, as the stream never leaves it.

#include "document/Document.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kesview {

/// Takes the next @p size bytes of a stream; they are gone when it returns.
using ByteSink = std::function<void(const char* data, std::size_t size)>;

/// How many bytes writeDocument() will make of @p document.
std::size_t streamSize(const Document& document);

/// Hands the document to @p sink piece by piece: large arrays as they lie in the document, all else
/// gathered. What the sink throws passes through.
void writeDocument(const Document& document, const ByteSink& sink);

/// The same in one text.
std::string toBytes(const Document& document);

/// The document of a whole stream. Throws std::runtime_error on anything that writeDocument() does
/// not make, and on what checkDocument() refuses: the sender may have been damaged.
Document readDocument(std::string_view bytes);

}  // namespace kesview
