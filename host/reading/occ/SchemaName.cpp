/// @file
/// See SchemaName.h.

#include "reading/occ/SchemaName.h"

#include <sstream>
#include <vector>

namespace kesview {

namespace {

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

/// The numbers in braces: 1 0 10303 442 3 1 4.
std::vector<int> objectIdentifier(const std::string& fileSchema) {
    const auto brace = fileSchema.find('{');
    if (brace == std::string::npos) {
        return {};
    }
    std::istringstream text(fileSchema.substr(brace + 1));
    std::vector<int> numbers;
    for (int number = 0; text >> number;) {
        numbers.push_back(number);
    }
    return numbers;
}

/// " edition N", or nothing where the identifier does not tell.
std::string editionOf242(const std::string& fileSchema) {
    const std::vector<int> numbers = objectIdentifier(fileSchema);
    if (numbers.size() < 5 || numbers[3] != 442) {
        return {};
    }
    // versions 1 and 2 are the first edition and its correction; 3 is the second edition
    const int version = numbers[4];
    return " edition " + std::to_string(version <= 2 ? 1 : version - 1);
}

std::string withoutNumbers(const std::string& fileSchema) {
    const std::string name = fileSchema.substr(0, fileSchema.find('{'));
    const auto end = name.find_last_not_of(" .");
    return end == std::string::npos ? std::string() : name.substr(0, end + 1);
}

}  // namespace

std::string schemaName(const std::string& fileSchema) {
    if (contains(fileSchema, "AP242")) {
        return "AP242" + editionOf242(fileSchema);
    }
    if (contains(fileSchema, "AP203")) {
        return "AP203 edition 2";
    }
    if (contains(fileSchema, "CONFIG_CONTROL_DESIGN")) {
        return "AP203";
    }
    if (contains(fileSchema, "AUTOMOTIVE_DESIGN")) {
        return "AP214";
    }
    return withoutNumbers(fileSchema);
}

}  // namespace kesview
