// What a fuzz target reads its calls from: the bytes of one input, front to back, so that a byte
// that libFuzzer changes changes one call. Behind the end everything reads as zero.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace Fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : _next(data), _end(data + size) {}

    bool IsAtEnd() const { return _next == _end; }

    std::uint8_t Byte() { return IsAtEnd() ? std::uint8_t{0} : *_next++; }

    /// 0 … count - 1; count 1 … 256.
    unsigned Below(unsigned count) { return Byte() % count; }

    bool Flag() { return (Byte() & 1) != 0; }

    /// Any value of a number type, NaN and infinities of floating-point types too.
    template <typename Number>
    Number Any() {
        unsigned char bytes[sizeof(Number)];
        for (unsigned char& byte : bytes) {
            byte = Byte();
        }
        Number number;
        std::memcpy(&number, bytes, sizeof(Number));
        return number;
    }

    /// Up to `longest` (at most 255) code units of every kind: ASCII, zero, surrogates, and numbers
    /// that are no character at all.
    std::wstring Text(unsigned longest) {
        std::wstring text;
        for (unsigned left = Below(longest + 1); left > 0 && !IsAtEnd(); --left) {
            text += CodeUnit();
        }
        return text;
    }

private:
    wchar_t CodeUnit() {
        const std::uint8_t byte = Byte();
        if (byte < 0xF8) {
            return static_cast<wchar_t>(byte);
        }
        if (byte < 0xFA) {
            return static_cast<wchar_t>(0xD800 + Any<std::uint16_t>() % 0x800);
        }
        return byte < 0xFD ? static_cast<wchar_t>(Any<std::uint16_t>()) : Any<wchar_t>();
    }

    const std::uint8_t* _next;
    const std::uint8_t* _end;
};

/// Ends the program as a finding.
[[noreturn]] inline void Fail(const std::string& explanation) {
    std::fprintf(stderr, "DIFFERENCE: %s\n", explanation.c_str());
    std::fflush(stderr);
    __builtin_trap();
}

inline void Check(bool holds, const char* explanation) {
    if (!holds) {
        Fail(explanation);
    }
}

}  // namespace Fuzz
