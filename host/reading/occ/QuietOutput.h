#pragma once

/// @file
/// Keeps Open CASCADE from printing.

#include <streambuf>

namespace kesview {

/// While it lives, std::cout is mute, to which Open CASCADE writes here and there; its messenger
/// loses its printers for good. Output by file descriptor or stdio is not touched.
class QuietOutput {
public:
    QuietOutput();
    ~QuietOutput();
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;

private:
    std::streambuf* _buffer;
};

}  // namespace kesview
