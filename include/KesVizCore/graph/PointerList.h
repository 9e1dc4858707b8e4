#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace KesVizCore {

/// @cond The inside of nodes, which hosts do not use.

/// The lists inside a node: one word each while they hold no more than one pointer, as most do.
///
/// A list becomes a std::vector when it grows, when it takes null, or when somebody asks for the
/// vector, and stays one. Elements are neither owned nor looked at. Only std::bad_alloc is thrown,
/// and then nothing has changed.
template <typename Element>
class PointerList {
public:
    using Vector = std::vector<Element*>;
    using Place = Element* const*;

    PointerList() = default;
    PointerList(const PointerList& other) : _word(nullptr) { *this = other; }
    ~PointerList() { delete vector(); }

    PointerList& operator=(const PointerList& other) {
        if (this == &other) {
            return *this;
        }
        if (vector() != nullptr || other.size() > 1 ||
            (!other.empty() && other.front() == nullptr)) {
            AsVector().assign(other.begin(), other.end());
        } else {
            _word = other.empty() ? nullptr : other.front();
        }
        return *this;
    }

    Place begin() const { return vector() != nullptr ? vector()->data() : &_word; }
    Place end() const { return begin() + size(); }
    bool empty() const { return size() == 0; }
    Element* front() const { return *begin(); }

    std::size_t size() const {
        const Vector* const many = vector();
        return many != nullptr ? many->size() : (_word != nullptr ? 1 : 0);
    }

    void push_back(Element* element) {
        if (_word == nullptr && element != nullptr) {
            _word = element;
        } else {
            AsVector().push_back(element);
        }
    }

    /// Puts @p element, which must not be null, in that place.
    void set(Place place, Element* element) { *const_cast<Element**>(place) = element; }

    void erase(Place place) {
        if (Vector* const many = vector()) {
            many->erase(many->begin() + (place - begin()));
        } else {
            _word = nullptr;
        }
    }

    void clear() {
        if (Vector* const many = vector()) {
            many->clear();
        } else {
            _word = nullptr;
        }
    }

private:
    friend class GeoNode;

    static constexpr std::uintptr_t kIsVector = 1;

    /// The list as a vector, for as long as the list lives: who changes it changes the list.
    Vector& AsVector() const {
        if (vector() == nullptr) {
            auto many = std::make_unique<Vector>(begin(), end());
            _word = reinterpret_cast<Element*>(reinterpret_cast<char*>(many.release()) + kIsVector);
        }
        return *vector();
    }

    Vector* vector() const {
        const bool isVector = (reinterpret_cast<std::uintptr_t>(_word) & kIsVector) != 0;
        char* const address = reinterpret_cast<char*>(_word);
        return isVector ? reinterpret_cast<Vector*>(address - kIsVector) : nullptr;
    }

    /// The only element, null, or a vector's address with the lowest bit set, which no element's
    /// address has.
    mutable Element* _word = nullptr;
};

/// @endcond

}  // namespace KesVizCore
