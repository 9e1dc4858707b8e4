#include "sample/ExchangeText.h"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace kesview {
namespace {

constexpr const char* dataStart = "DATA;\n";
constexpr const char* dataEnd = "ENDSEC;\nEND-ISO-10303-21;\n";
constexpr std::size_t lineLength = 78;

std::string joinLines(const std::string& text) {
    static const std::regex lineBreak("\n *");
    return std::regex_replace(text, lineBreak, "");
}

/// Breaks lines after commas only, which never fall into a name of ours.
std::string breakLines(const std::string& text) {
    std::string result;
    std::size_t start = 0;
    while (text.size() - start > lineLength) {
        std::size_t comma = text.rfind(',', start + lineLength);
        if (comma == std::string::npos || comma < start)
            comma = text.find(',', start);
        if (comma == std::string::npos)
            break;
        result += text.substr(start, comma + 1 - start) + "\n  ";
        start = comma + 1;
    }
    return result + text.substr(start);
}

}  // namespace

ExchangeText::ExchangeText(std::string text) {
    const std::size_t data = text.find(dataStart);
    const std::size_t end = text.rfind("ENDSEC;");
    if (data == std::string::npos || end == std::string::npos || end < data)
        throw std::runtime_error("The writer gave no exchange file");
    const std::size_t start = data + std::string(dataStart).size();
    _head = text.substr(0, start);
    const std::string body = text.substr(start, end - start);
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t stop = body.find(";\n", at);
        const std::size_t equals = body.find('=', at);
        if (stop == std::string::npos || equals == std::string::npos || body[at] != '#')
            throw std::runtime_error("The writer gave an entity that cannot be read");
        const std::size_t first = body.find_first_not_of(' ', equals + 1);
        _entities[std::stoi(body.substr(at + 1))] = joinLines(body.substr(first, stop - first));
        at = stop + 2;
    }
}

int ExchangeText::Find(const std::string& start) const {
    const std::vector<int> all = FindAll(start);
    if (all.empty())
        throw std::runtime_error("The writer gave no " + start);
    return all.front();
}

std::vector<int> ExchangeText::FindAll(const std::string& start) const {
    std::vector<int> found;
    for (const auto& [id, entity] : _entities) {
        if (entity.compare(0, start.size(), start) == 0)
            found.push_back(id);
    }
    return found;
}

int ExchangeText::Reference(int id, int place) const {
    static const std::regex number("#([0-9]+)");
    const std::string& entity = _entities.at(id);
    std::vector<int> references;
    for (std::sregex_iterator at(entity.begin(), entity.end(), number), end; at != end; ++at)
        references.push_back(std::stoi((*at)[1]));
    const std::size_t index =
        place < 0 ? references.size() - std::size_t(-place) : std::size_t(place);
    return references.at(index);
}

int ExchangeText::Add(const std::string& entity) {
    const int id = _entities.rbegin()->first + 1;
    _entities[id] = entity;
    return id;
}

void ExchangeText::Replace(const std::string& old, const std::string& by) {
    for (auto& [id, entity] : _entities) {
        const std::size_t at = entity.find(old);
        if (at != std::string::npos)
            entity.replace(at, old.size(), by);
    }
}

std::string ExchangeText::Text() const {
    std::string text = _head;
    for (const auto& [id, entity] : _entities)
        text += breakLines(reference(id) + "=" + entity + ";") + "\n";
    return text + dataEnd;
}

std::string reference(int id) {
    return "#" + std::to_string(id);
}

std::string real(double number) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::uppercase << std::setprecision(12) << number;
    std::string text = stream.str();
    if (text.find('.') == std::string::npos)
        text.insert(std::min(text.find('E'), text.size()), ".");
    return text;
}

}  // namespace kesview
