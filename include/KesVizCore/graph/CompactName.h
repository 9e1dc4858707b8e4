#pragma once

#include <string>

namespace KesVizCore {

/// @cond The inside of nodes, which hosts do not use.

/// The name inside a node, without memory of its own where it is short.
///
/// Up to 15 characters below U+0100 are kept as a byte each; any other text is a std::wstring on
/// the heap. Only std::bad_alloc is thrown, and then nothing has changed.
class CompactName {
public:
    CompactName() = default;
    CompactName(const CompactName& other);
    CompactName& operator=(const CompactName& other);
    ~CompactName();

    void Set(const std::wstring& text);
    std::wstring Get() const;

    /// The characters as bytes, the first of kShortSize that may be read; or null where the name is
    /// on the heap.
    const char* Short() const;
    static constexpr std::size_t kShortSize = 16;
    std::size_t ShortLength() const { return _bytes[kLast]; }  ///< where Short is not null
    const std::wstring& Long() const;                          ///< where Short is null

    /// Below, equal to or above zero, ordered as std::wstring orders.
    static int Compare(const CompactName& one, const CompactName& other);

private:
    static constexpr std::size_t kLast = kShortSize - 1;
    static constexpr unsigned char kOnHeap = 0xFF;

    bool onHeap() const { return _bytes[kLast] == kOnHeap; }
    wchar_t at(std::size_t place) const;
    std::size_t length() const;

    /// The characters, nulls, and the number of characters in the last byte; or the address of the
    /// text on the heap, and kOnHeap in the last.
    alignas(void*) unsigned char _bytes[kShortSize] = {};
};

/// @endcond

}  // namespace KesVizCore
