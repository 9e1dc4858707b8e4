#pragma once

/// @file
/// One parameter of an entity instance in an exchange file (ISO 10303-21).

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

/// The number of an entity instance: 4711 for "#4711". 0 names none.
using EntityNumber = std::uint64_t;

/// A parsed parameter. What does not fit the kind asked for reads as 0, empty or none, so that a
/// damaged file is walked without a check at each step.
struct ExchangeValue {
    enum class Kind {
        Unset,        ///< $, or a parameter that is not there
        Derived,      ///< *
        Number,       ///< integer or real
        Text,         ///< a string, or the digits of a binary
        Enumeration,  ///< .NAME., without its dots
        Reference,    ///< #number
        List,
        Typed  ///< NAME(value): the name in @c text, the value in @c items
    };

    Kind kind = Kind::Unset;
    double number = 0;
    EntityNumber reference = 0;
    std::string text;
    std::vector<ExchangeValue> items;

    bool IsSet() const { return kind != Kind::Unset && kind != Kind::Derived; }
    bool IsList() const { return kind == Kind::List; }
    bool IsNumber() const { return kind == Kind::Number; }

    /// The item at @p index of a list; an unset value where there is none.
    const ExchangeValue& At(std::size_t index) const;

    /// The value, or what a typed value wraps.
    const ExchangeValue& Unwrapped() const;

    /// Every instance that the value refers to, at any depth, in order.
    std::vector<EntityNumber> References() const;
};

}  // namespace kesview
