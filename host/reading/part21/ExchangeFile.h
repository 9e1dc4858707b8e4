#pragma once

/// @file
/// Entity instances of an exchange file (ISO 10303-21) by number.

#include "reading/part21/ExchangeValue.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kesview {

/// One instance, parsed: its partial entities, one unless it is a complex instance. The
/// parameters of a complex instance's parts are those part's own; a simple instance holds the
/// inherited ones first.
class ExchangeInstance {
public:
    struct Part {
        std::string type;          ///< upper case
        ExchangeValue parameters;  ///< a list
    };

    EntityNumber number = 0;
    std::vector<Part> parts;

    bool IsComplex() const { return parts.size() > 1; }
    bool Is(std::string_view type) const { return Find(type) != nullptr; }
    /// True when any part's type ends so.
    bool HasTypeEnding(std::string_view ending) const;
    const Part* Find(std::string_view type) const;

    /// Of a simple instance, whatever its type, the parameter at @p simpleIndex; of a complex one
    /// that of its part @p type at @p ownIndex. Unset where there is none.
    const ExchangeValue& Attribute(std::string_view type, std::size_t ownIndex,
                                   std::size_t simpleIndex) const;

    /// The first parameter of a simple instance or of the part REPRESENTATION_ITEM, if a text.
    const std::string& Name() const;

    /// Every instance that it refers to, in order.
    std::vector<EntityNumber> References() const;
};

/// The data section of an exchange file, scanned once; instances are parsed when asked for.
///
/// Damaged text never stops it: what is no instance is skipped up to the next one and counted.
///
/// @par Errors
/// Nothing throws but std::bad_alloc. Absent numbers answer an instance without parts.
///
/// @par Threads
/// Many threads may read one.
class ExchangeFile {
public:
    /// Takes the whole text of a file.
    static ExchangeFile FromText(std::string text);
    /// None where the file cannot be read.
    static std::optional<ExchangeFile> Open(const std::string& path);

    std::size_t Size() const { return _entries.size(); }
    bool Has(EntityNumber number) const { return _byNumber.count(number) != 0; }

    /// Instances of exactly this type, simple or as a part of a complex one, in file order.
    const std::vector<EntityNumber>& OfType(std::string_view type) const;
    /// Instances of every type that ends so, in file order.
    std::vector<EntityNumber> OfTypeEnding(std::string_view ending) const;

    ExchangeInstance Get(EntityNumber number) const;

    /// Instances that could not be read whole, and numbers given twice (the first counts).
    std::size_t SkippedCount() const { return _skipped; }
    /// The text ends within an instance.
    bool IsTruncated() const { return _truncated; }

private:
    struct Entry {
        EntityNumber number = 0;
        std::size_t begin = 0;  ///< of what stands behind the equals sign
        std::size_t end = 0;    ///< of the semicolon
    };

    void Scan();

    std::string _text;
    std::vector<Entry> _entries;
    std::unordered_map<EntityNumber, std::size_t> _byNumber;
    std::map<std::string, std::vector<EntityNumber>, std::less<>> _byType;
    std::size_t _skipped = 0;
    bool _truncated = false;
};

}  // namespace kesview
