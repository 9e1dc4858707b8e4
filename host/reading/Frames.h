#pragma once

/// @file
/// How the reader's process speaks to the one that waits for it: frames on a pipe, each a header
/// and its content. Any number tell progress, then one is the document or why there is none.

#include "document/Document.h"
#include "reading/ReadFile.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kesview {

/// The descriptor on which the reader's process writes its frames.
constexpr int frameDescriptor = 3;

struct FrameHeader {
    std::uint32_t magic = 0;
    std::uint32_t kind = 0;
    std::uint64_t size = 0;  ///< of the content, in bytes
};

/// Writes frames to a descriptor that it does not own.
///
/// @par Errors
/// Every operation throws std::runtime_error when nobody reads any more.
class FrameWriter {
public:
    explicit FrameWriter(int descriptor) : _descriptor(descriptor) {}

    void WriteProgress(const std::string& stage, double fraction);
    /// Needs no memory, so that the lack of it can be told.
    void WriteFailure(ReadFailure failure, std::string_view message);
    void WriteDocument(const Document& document);

private:
    void writeHeader(std::uint32_t kind, std::size_t size);
    void write(const char* data, std::size_t size);

    int _descriptor;
};

/// Puts frames together from the pieces that arrive.
///
/// It tells where it wants the next bytes and is told how many it got; contents so arrive where
/// they are parsed, with no copy between.
///
/// @par Errors
/// Took() throws std::runtime_error on anything that FrameWriter does not write, and on contents
/// larger than allowed; std::bad_alloc where the content has no room.
class FrameParser {
public:
    explicit FrameParser(std::uint64_t largestDocument) : _largestDocument(largestDocument) {}

    /// Where the next bytes belong, and how many at most: at least one until IsDone().
    std::pair<char*, std::size_t> Wanted();
    /// @p size bytes were put there.
    void Took(std::size_t size);

    struct Progress {
        std::string stage;
        double fraction = 0;  ///< 0 to 1
    };
    /// What was told last, once.
    std::optional<Progress> TakeProgress() { return std::exchange(_progress, std::nullopt); }

    /// True when the document or the failure is complete; no further frame is expected.
    bool IsDone() const { return _done; }
    /// The document, or the ReadError that was sent. Throws std::runtime_error on a document that
    /// does not hold together.
    Document Result() const;

private:
    void headerIsComplete();
    void contentIsComplete();
    std::string_view content() const;

    std::uint64_t _largestDocument;
    FrameHeader _header;
    std::unique_ptr<char[]> _content;
    std::size_t _filled = 0;
    std::optional<Progress> _progress;
    bool _inContent = false;
    bool _done = false;
};

}  // namespace kesview
