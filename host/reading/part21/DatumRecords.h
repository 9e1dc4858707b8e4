#pragma once

/// @file
/// Datums and datum targets of an exchange file.

#include "reading/part21/AspectLinks.h"
#include "reading/part21/PmiRecord.h"

namespace kesview {

/// Every datum once, however often tolerances use it, and every datum target, in file order.
std::vector<PmiRecord> readDatums(const ExchangeFile& file, const AspectLinks& aspects);

/// What a datum system, or an older datum reference, refers to.
struct DatumReferences {
    std::vector<EntityNumber> datums;  ///< instances of DATUM, in the order of precedence
    std::string text;                  ///< "| A | B Ⓜ | C-D"
};
DatumReferences readDatumReferences(const ExchangeFile& file,
                                    const std::vector<EntityNumber>& systems);

/// The letter of an instance of DATUM.
std::string datumLetter(const ExchangeInstance& datum);

}  // namespace kesview
