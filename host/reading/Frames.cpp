/// @file
#include "reading/Frames.h"

#include "document/DocumentStream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace kesview {

namespace {

constexpr std::uint32_t frameMagic = 0x4D52464BU;
constexpr std::uint32_t progressKind = 1;
constexpr std::uint32_t failureKind = 2;
constexpr std::uint32_t documentKind = 3;
constexpr std::uint64_t largestText = 1U << 20;

[[noreturn]] void refuse() {
    throw std::runtime_error("The reader's answer makes no sense.");
}

template <typename T>
T firstValue(std::string_view content) {
    T value{};
    if (content.size() < sizeof value) {
        refuse();
    }
    std::memcpy(&value, content.data(), sizeof value);
    return value;
}

}  // namespace

void FrameWriter::WriteProgress(const std::string& stage, double fraction) {
    fraction = fraction > 0 ? std::min(fraction, 1.0) : 0.0;  // not a number is 0, too
    char number[sizeof fraction];
    std::memcpy(number, &fraction, sizeof fraction);
    writeHeader(progressKind, sizeof number + stage.size());
    write(number, sizeof number);
    write(stage.data(), stage.size());
}

void FrameWriter::WriteFailure(ReadFailure failure, std::string_view message) {
    const std::int32_t code = static_cast<std::int32_t>(failure);
    char number[sizeof code];
    std::memcpy(number, &code, sizeof code);
    message = message.substr(0, largestText / 2);
    writeHeader(failureKind, sizeof number + message.size());
    write(number, sizeof number);
    write(message.data(), message.size());
}

void FrameWriter::WriteDocument(const Document& document) {
    writeHeader(documentKind, streamSize(document));
    writeDocument(document, [this](const char* data, std::size_t size) { write(data, size); });
}

void FrameWriter::writeHeader(std::uint32_t kind, std::size_t size) {
    const FrameHeader header{frameMagic, kind, size};
    char bytes[sizeof header];
    std::memcpy(bytes, &header, sizeof header);
    write(bytes, sizeof bytes);
}

void FrameWriter::write(const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(_descriptor, data, size);
        if (written < 0 && errno != EINTR) {
            throw std::runtime_error("Nobody waits for the reader's answer.");
        }
        if (written > 0) {
            data += written;
            size -= static_cast<std::size_t>(written);
        }
    }
}

std::pair<char*, std::size_t> FrameParser::Wanted() {
    if (_inContent) {
        return {_content.get() + _filled, static_cast<std::size_t>(_header.size) - _filled};
    }
    return {reinterpret_cast<char*>(&_header) + _filled, sizeof _header - _filled};
}

void FrameParser::Took(std::size_t size) {
    _filled += size;
    if (!_inContent && _filled == sizeof _header) {
        headerIsComplete();
    }
    if (_inContent && _filled == _header.size) {
        contentIsComplete();
    }
}

void FrameParser::headerIsComplete() {
    const bool isDocument = _header.kind == documentKind;
    if (_header.magic != frameMagic || _header.kind < progressKind || _header.kind > documentKind ||
        _header.size > (isDocument ? _largestDocument : largestText)) {
        refuse();
    }
    // Not cleared, so that no page is touched before its bytes arrive.
    _content.reset(new char[static_cast<std::size_t>(_header.size)]);
    _filled = 0;
    _inContent = true;
}

void FrameParser::contentIsComplete() {
    _done = _header.kind != progressKind;
    if (_done) {
        return;
    }
    const double fraction = firstValue<double>(content());
    if (!(fraction >= 0 && fraction <= 1)) {
        refuse();
    }
    _progress = {std::string(content().substr(sizeof fraction)), fraction};
    _filled = 0;
    _inContent = false;
}

Document FrameParser::Result() const {
    if (_header.kind == documentKind) {
        return readDocument(content());
    }
    const std::int32_t code = firstValue<std::int32_t>(content());
    if (code < 0 || code > static_cast<std::int32_t>(ReadFailure::Interrupted)) {
        refuse();
    }
    throw ReadError(static_cast<ReadFailure>(code), std::string(content().substr(sizeof code)));
}

std::string_view FrameParser::content() const {
    return {_content.get(), static_cast<std::size_t>(_header.size)};
}

}  // namespace kesview
