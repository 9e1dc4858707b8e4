#include <KesVizCore/graph/CompactName.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace KesVizCore {

namespace {

/// Eight bytes as a number, the first of which weighs most. Written without a loop it is a single
/// instruction.
std::uint64_t bigEndian(const unsigned char* bytes) {
    const auto shifted = [bytes](int place) {
        return std::uint64_t{bytes[place]} << (56 - 8 * place);
    };
    return shifted(0) | shifted(1) | shifted(2) | shifted(3) | shifted(4) | shifted(5) |
           shifted(6) | shifted(7);
}

}  // namespace

CompactName::CompactName(const CompactName& other) {
    *this = other;
}

CompactName& CompactName::operator=(const CompactName& other) {
    if (other.onHeap()) {
        Set(other.Long());
    } else if (this != &other) {
        Set(std::wstring());
        std::memcpy(_bytes, other._bytes, sizeof _bytes);
    }
    return *this;
}

CompactName::~CompactName() {
    if (onHeap()) {
        delete &Long();
    }
}

void CompactName::Set(const std::wstring& text) {
    unsigned char bytes[kShortSize] = {};
    bool isShort = text.size() <= kLast;
    if (isShort) {
        std::uint32_t all = 0;  // unsigned, since wchar_t has a sign on Linux
        for (std::size_t place = 0; place < text.size(); ++place) {
            all |= static_cast<std::uint32_t>(text[place]);
            bytes[place] = static_cast<unsigned char>(text[place]);
        }
        isShort = all < 0x100;
        bytes[kLast] = static_cast<unsigned char>(text.size());
    }
    if (!isShort) {
        const auto* const kept = new std::wstring(text);
        std::memcpy(bytes, &kept, sizeof(void*));
        bytes[kLast] = kOnHeap;
    }
    if (onHeap()) {
        delete &Long();
    }
    std::memcpy(_bytes, bytes, sizeof bytes);
}

std::wstring CompactName::Get() const {
    return onHeap() ? Long() : std::wstring(_bytes, _bytes + _bytes[kLast]);
}

const char* CompactName::Short() const {
    return onHeap() ? nullptr : reinterpret_cast<const char*>(_bytes);
}

const std::wstring& CompactName::Long() const {
    const std::wstring* address = nullptr;
    std::memcpy(&address, _bytes, sizeof(void*));
    return *address;
}

wchar_t CompactName::at(std::size_t place) const {
    return onHeap() ? Long()[place] : static_cast<wchar_t>(_bytes[place]);
}

std::size_t CompactName::length() const {
    return onHeap() ? Long().size() : _bytes[kLast];
}

int CompactName::Compare(const CompactName& one, const CompactName& other) {
    if (!one.onHeap() && !other.onHeap()) {  // nulls behind the characters, then their number
        const std::uint64_t head = bigEndian(one._bytes);
        const std::uint64_t otherHead = bigEndian(other._bytes);
        if (head != otherHead) {
            return head < otherHead ? -1 : 1;
        }
        const std::uint64_t tail = bigEndian(one._bytes + sizeof head);
        const std::uint64_t otherTail = bigEndian(other._bytes + sizeof head);
        return tail == otherTail ? 0 : tail < otherTail ? -1 : 1;
    }
    const std::size_t common = std::min(one.length(), other.length());
    for (std::size_t place = 0; place < common; ++place) {
        if (one.at(place) != other.at(place)) {
            return one.at(place) < other.at(place) ? -1 : 1;
        }
    }
    return one.length() == other.length() ? 0 : one.length() < other.length() ? -1 : 1;
}

}  // namespace KesVizCore
