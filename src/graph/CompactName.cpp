#include <KesVizCore/graph/CompactName.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

namespace KesVizCore {

CompactName::CompactName(const CompactName& other) {
    *this = other;
}

CompactName& CompactName::operator=(const CompactName& other) {
    if (other.onHeap()) {
        Set(other.Long());
    } else if (this != &other) {
        Set(std::wstring());
        std::copy(std::begin(other._bytes), std::end(other._bytes), std::begin(_bytes));
    }
    return *this;
}

CompactName::~CompactName() {
    Set(std::wstring());
}

void CompactName::Set(const std::wstring& text) {
    const bool isShort =
        text.size() <= kLast && std::all_of(text.begin(), text.end(), [](wchar_t character) {
            return static_cast<std::uint32_t>(character) < 0x100;  // wchar_t has a sign on Linux
        });
    std::unique_ptr<std::wstring> kept(isShort ? nullptr : new std::wstring(text));
    if (onHeap()) {
        delete &Long();
    }
    if (isShort) {
        std::copy(text.begin(), text.end(), std::begin(_bytes));
        _bytes[kLast] = static_cast<unsigned char>(text.size());
    } else {
        std::wstring* const address = kept.release();
        std::memcpy(_bytes, &address, sizeof address);
        _bytes[kLast] = kOnHeap;
    }
}

std::wstring CompactName::Get() const {
    return onHeap() ? Long() : std::wstring(_bytes, _bytes + _bytes[kLast]);
}

const char* CompactName::Short() const {
    return onHeap() ? nullptr : reinterpret_cast<const char*>(_bytes);
}

const std::wstring& CompactName::Long() const {
    const std::wstring* address = nullptr;
    std::memcpy(&address, _bytes, sizeof address);
    return *address;
}

wchar_t CompactName::at(std::size_t place) const {
    return onHeap() ? Long()[place] : static_cast<wchar_t>(_bytes[place]);
}

std::size_t CompactName::length() const {
    return onHeap() ? Long().size() : _bytes[kLast];
}

int CompactName::Compare(const CompactName& one, const CompactName& other) {
    const std::size_t common = std::min(one.length(), other.length());
    if (!one.onHeap() && !other.onHeap()) {
        const int difference = std::memcmp(one._bytes, other._bytes, common);
        if (difference != 0) {
            return difference;
        }
    }
    for (std::size_t place = 0; place < common; ++place) {
        if (one.at(place) != other.at(place)) {
            return one.at(place) < other.at(place) ? -1 : 1;
        }
    }
    return one.length() == other.length() ? 0 : one.length() < other.length() ? -1 : 1;
}

}  // namespace KesVizCore
