#pragma once

/// @file
/// Finds the entity instances in the text of an exchange file, without parsing them.

#include "reading/part21/ExchangeValue.h"

#include <string>
#include <string_view>
#include <vector>

namespace kesview {

struct ScannedInstance {
    EntityNumber number = 0;
    std::size_t begin = 0;           ///< of what stands behind the equals sign
    std::size_t end = 0;             ///< of its semicolon
    std::vector<std::string> types;  ///< upper case, one unless it is a complex instance
};

/// Walks over one text from instance to instance. Where an instance does not end before the next
/// one starts, it is skipped and counted.
class ExchangeScanner {
public:
    /// @p text must outlive the scanner.
    explicit ExchangeScanner(std::string_view text);

    /// False at the end, with @p found in no certain state.
    bool Next(ScannedInstance& found);

    std::size_t SkippedCount() const { return _skipped; }
    bool IsTruncated() const { return _truncated; }

private:
    enum class Body { Whole, Damaged, EndOfText };

    bool ReadHead(ScannedInstance& found);
    Body ReadBody(ScannedInstance& found);
    bool SkipText();
    void SkipComment();
    bool StartsInstance(std::size_t at) const;
    std::size_t NextInstanceLine(std::size_t begin, std::size_t end) const;
    void ReadType(ScannedInstance& found, int depth, bool complex);

    std::string_view _text;
    std::size_t _at = 0;
    std::size_t _skipped = 0;
    bool _truncated = false;
};

}  // namespace kesview
