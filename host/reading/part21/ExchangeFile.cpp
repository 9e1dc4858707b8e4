/// @file
/// See ExchangeFile.h.

#include "reading/part21/ExchangeFile.h"

#include "reading/part21/ExchangeParser.h"
#include "reading/part21/ExchangeScanner.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace kesview {
namespace {

bool endsWith(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

const ExchangeValue& unset() {
    static const ExchangeValue value;
    return value;
}

}  // namespace

bool ExchangeInstance::HasTypeEnding(std::string_view ending) const {
    return std::any_of(parts.begin(), parts.end(),
                       [ending](const Part& part) { return endsWith(part.type, ending); });
}

const ExchangeInstance::Part* ExchangeInstance::Find(std::string_view type) const {
    const auto part =
        std::find_if(parts.begin(), parts.end(), [type](const Part& p) { return p.type == type; });
    return part == parts.end() ? nullptr : &*part;
}

const ExchangeValue& ExchangeInstance::Attribute(std::string_view type, std::size_t ownIndex,
                                                 std::size_t simpleIndex) const {
    if (parts.size() == 1) {
        return parts.front().parameters.At(simpleIndex);
    }
    const Part* part = Find(type);
    return part == nullptr ? unset() : part->parameters.At(ownIndex);
}

const std::string& ExchangeInstance::Name() const {
    return Attribute("REPRESENTATION_ITEM", 0, 0).text;
}

std::vector<EntityNumber> ExchangeInstance::References() const {
    std::vector<EntityNumber> all;
    for (const Part& part : parts) {
        const auto some = part.parameters.References();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

ExchangeFile ExchangeFile::FromText(std::string text) {
    ExchangeFile file;
    file._text = std::move(text);
    file.Scan();
    return file;
}

std::optional<ExchangeFile> ExchangeFile::Open(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (stream.bad()) {
        return std::nullopt;
    }
    return FromText(std::move(text));
}

void ExchangeFile::Scan() {
    ExchangeScanner scanner(_text);
    ScannedInstance found;
    while (scanner.Next(found)) {
        if (!_byNumber.emplace(found.number, _entries.size()).second) {
            ++_skipped;
            continue;
        }
        _entries.push_back({found.number, found.begin, found.end});
        for (const std::string& type : found.types) {
            auto& numbers = _byType[type];
            if (numbers.empty() || numbers.back() != found.number) {
                numbers.push_back(found.number);
            }
        }
    }
    _skipped += scanner.SkippedCount();
    _truncated = scanner.IsTruncated();
}

const std::vector<EntityNumber>& ExchangeFile::OfType(std::string_view type) const {
    static const std::vector<EntityNumber> none;
    const auto found = _byType.find(type);
    return found == _byType.end() ? none : found->second;
}

std::vector<EntityNumber> ExchangeFile::OfTypeEnding(std::string_view ending) const {
    std::vector<std::size_t> places;
    for (const auto& [type, numbers] : _byType) {
        if (endsWith(type, ending)) {
            for (const EntityNumber number : numbers) {
                places.push_back(_byNumber.at(number));
            }
        }
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::vector<EntityNumber> numbers;
    for (const std::size_t place : places) {
        numbers.push_back(_entries[place].number);
    }
    return numbers;
}

ExchangeInstance ExchangeFile::Get(EntityNumber number) const {
    ExchangeInstance instance;
    const auto found = _byNumber.find(number);
    if (found == _byNumber.end()) {
        return instance;
    }
    const Entry& entry = _entries[found->second];
    instance.number = number;
    instance.parts =
        parseInstance(std::string_view(_text).substr(entry.begin, entry.end - entry.begin));
    return instance;
}

}  // namespace kesview
