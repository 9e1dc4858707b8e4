#include "core/Allocation.h"

#include <KesVizCore/core/RenderId.h>

#include <stdexcept>

namespace KesVizCore {

namespace {

std::size_t checkedLength(int length) {
    if (length < 0) {
        throw std::length_error("RenderId: the length must not be negative");
    }
    return static_cast<std::size_t>(length);
}

const char* originName(OriginEnum origin) {
    switch (origin) {
        case View3D:
            return "View3D";
        case ViewTree:
            return "ViewTree";
        default:
            return "Unknown";
    }
}

}  // namespace

RenderId::RenderId() : _origin(Unknown) {}

RenderId::RenderId(const std::vector<std::uint64_t>& values, OriginEnum origin)
    : _origin(origin), _values(values) {}

RenderId::RenderId(const std::uint64_t* values, const int& count, const OriginEnum& origin)
    : _origin(origin), _values(values, values + checkedLength(count)) {}

RenderId::RenderId(const RenderId& other) = default;
RenderId::RenderId(RenderId&& other) noexcept = default;

RenderId& RenderId::operator=(const RenderId& other) {
    _values = other._values;  // first, since it may fail
    _origin = other._origin;
    return *this;
}

RenderId& RenderId::operator=(RenderId&& other) noexcept = default;
RenderId::~RenderId() = default;

RenderId* RenderId::CreateRenderId() {
    return nullWhenExhausted([] { return new RenderId(); });
}

RenderId* RenderId::CreateRenderId(const std::vector<std::uint64_t>& values,
                                   const OriginEnum& origin) {
    return nullWhenExhausted([&] { return new RenderId(values, origin); });
}

RenderId* RenderId::CreateRenderId(const std::uint64_t* values, const int& count,
                                   const OriginEnum& origin) {
    return nullWhenExhausted([&] { return new RenderId(values, count, origin); });
}

void RenderId::DeleteRenderId(RenderId*& id) {
    delete id;
    id = nullptr;
}

void RenderId::DeleteRenderIdArr(RenderId*& ids) {
    delete[] ids;
    ids = nullptr;
}

OriginEnum RenderId::GetOrigin() const {
    return _origin;
}

void RenderId::SetOrigin(const OriginEnum& origin) {
    _origin = origin;
}

void RenderId::AddValue(const std::uint64_t& value) {
    _values.push_back(value);
}

void RenderId::SetValue(const int& index, const std::uint64_t& value) {
    if (index < 0) {
        throw std::out_of_range("RenderId: the index must not be negative");
    }
    const std::size_t place = static_cast<std::size_t>(index);
    const std::uint64_t kept = value;  // value may be one of our own, which growing would move
    if (_values.size() <= place) {
        _values.resize(place + 1);
    }
    _values[place] = kept;
}

void RenderId::SetLength(const int& length) {
    _values.resize(checkedLength(length));
}

int RenderId::Length() const {
    return static_cast<int>(_values.size());
}

bool RenderId::IsEmpty() const {
    return _values.empty();
}

std::uint64_t& RenderId::operator[](int index) const {
    return _values[static_cast<std::size_t>(index)];
}

void RenderId::Clear() {
    _values.clear();
    _origin = Unknown;
}

bool RenderId::operator==(const RenderId& other) const {
    return _origin == other._origin && _values == other._values;
}

bool RenderId::operator!=(const RenderId& other) const {
    return !(*this == other);
}

std::string RenderId::ToString() const {
    std::string text = "[ ";
    for (std::size_t place = 0; place < _values.size(); ++place) {
        text += place == 0 ? "" : ", ";
        text += std::to_string(_values[place]);
    }
    return text + " " + originName(_origin) + " ]";
}

}  // namespace KesVizCore

std::size_t std::hash<KesVizCore::RenderId>::operator()(
    const KesVizCore::RenderId& id) const noexcept {
    // Hosts pack meaning into any bits of an id, so each id is spread over all bits before the
    // next one joins: a product carries bits upwards, a fold brings them down again.
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;  // odd, its bits well mixed
    std::uint64_t mixed = spread;
    const auto add = [&mixed](std::uint64_t value) {
        mixed = (mixed ^ value) * spread;
        mixed = (mixed ^ mixed >> 32U) * spread;
        mixed ^= mixed >> 29U;
    };
    add(static_cast<std::uint64_t>(id.GetOrigin()));
    for (int place = 0; place < id.Length(); ++place) {
        add(id[place]);
    }
    return static_cast<std::size_t>(mixed);
}
