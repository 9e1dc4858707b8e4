/// @file
/// See ExchangeValue.h.

#include "reading/part21/ExchangeValue.h"

namespace kesview {
namespace {

void collectReferences(const ExchangeValue& value, std::vector<EntityNumber>& references) {
    if (value.kind == ExchangeValue::Kind::Reference) {
        references.push_back(value.reference);
    }
    for (const ExchangeValue& item : value.items) {
        collectReferences(item, references);
    }
}

}  // namespace

const ExchangeValue& ExchangeValue::At(std::size_t index) const {
    static const ExchangeValue unset;
    return index < items.size() ? items[index] : unset;
}

const ExchangeValue& ExchangeValue::Unwrapped() const {
    return kind == Kind::Typed && !items.empty() ? items.front().Unwrapped() : *this;
}

std::vector<EntityNumber> ExchangeValue::References() const {
    std::vector<EntityNumber> references;
    collectReferences(*this, references);
    return references;
}

}  // namespace kesview
