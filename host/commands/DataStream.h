#pragma once

/// @file
/// A stream to a file descriptor that remembers why a write failed.

#include <array>
#include <streambuf>

namespace kesview {

class DescriptorBuffer : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor);
    ~DescriptorBuffer() override;
    DescriptorBuffer(const DescriptorBuffer&) = delete;
    DescriptorBuffer& operator=(const DescriptorBuffer&) = delete;

    /// The system's number of the first failure; 0 while there was none.
    int Failure() const { return _failure; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    int _descriptor;
    int _failure = 0;
    std::array<char, 65536> _bytes;
};

}  // namespace kesview
