/// @file
/// kesview's own reader of exchange files on damaged text: whatever the text, it ends, answers the
/// same when asked again, and hands out triangles on points that there are.

#include "Input.h"
#include "document/Document.h"
#include "document/DocumentStream.h"
#include "reading/occ/SchemaName.h"
#include "reading/occ/ShortLists.h"
#include "reading/part21/ExchangeFile.h"
#include "reading/part21/ExchangeGeometry.h"
#include "reading/part21/ExchangePmi.h"
#include "reading/part21/ExchangeText.h"
#include "reading/part21/ExchangeUnits.h"
#include "reading/part21/ExchangeViews.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using namespace kesview;
using Fuzz::Check;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

std::vector<float> narrowed(const std::vector<Vector>& points) {
    std::vector<float> triples;
    for (const Vector& point : points) {
        for (const double coordinate : point) {
            triples.push_back(static_cast<float>(coordinate));
        }
    }
    return triples;
}

/// All that the text says, as one document to be compared by its bytes.
Document read(const ExchangeFile& file) {
    const double unit = readDefaultUnits(file).length.value_or(1);
    Document document;
    document.millimetresPerUnit = unit;
    const ExchangePmi pmi = readExchangePmi(file, unit);
    for (const ExchangeAnnotation& one : pmi.annotations) {
        Annotation annotation = one.annotation;
        annotation.id = one.product;
        for (const auto& line : one.drawing.lines) {
            annotation.lines.push_back(narrowed(line));
        }
        for (const PmiDrawing::Area& area : one.drawing.areas) {
            annotation.areas.push_back({narrowed(area.points), area.triangles});
        }
        annotation.texts = one.drawing.texts;
        for (const EntityNumber number : one.geometry) {
            annotation.links.push_back({EntityLink::Kind::Face, 0, number});
        }
        document.annotations.push_back(annotation);
    }
    for (const ExchangePmiView& one : pmi.views) {
        document.views.push_back(one.view);
    }
    for (const ExchangeView& one : readViews(file, unit)) {
        document.views.push_back(one.view);
    }
    document.findings = pmi.findings;
    return document;
}

/// Every instance is found under its number, and any may be taken for a curve, a frame or a unit.
void walk(const ExchangeFile& file) {
    const ExchangeGeometry geometry(file, 25.4, 1);
    const std::vector<EntityNumber> numbers = file.OfTypeEnding("");
    Check(numbers.size() == file.Size(), "every instance has a type");
    for (const EntityNumber number : numbers) {
        Check(file.Has(number), "an instance of a type is in the file");
        const ExchangeInstance instance = file.Get(number);
        Check(instance.number == number, "the instance of a number");
        for (const ExchangeInstance::Part& part : instance.parts) {
            Check(instance.Find(part.type) != nullptr, "a part is found by its type");
        }
        geometry.Frame(number);
        readMeasure(file, number);
        readUnit(file, number);
        const auto curve = geometry.Curve(number);
        Check(!curve || !curve->empty(), "a curve has points");
    }
}

/// Whether it is the same value, but for a list that lost what stood behind its first element.
bool isShortened(const ExchangeValue& whole, const ExchangeValue& shortened) {
    return whole.kind == shortened.kind && whole.items.empty() == shortened.items.empty() &&
           whole.items.size() >= shortened.items.size();
}

/// Whether something may stand between two values that is neither a comma nor a blank: a reader
/// passes over it as far as it must, and a list that becomes shorter may lose it. Comments count.
bool mayHoldStrayText(const std::string& text) {
    const auto isOneOf = [](char c, const char* signs) {
        return std::string(signs).find(c) != std::string::npos;
    };
    const auto isLetter = [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; };
    bool inString = false;
    bool afterBlank = false;
    bool dotBegins = false;
    char before = '(';
    for (const char c : text) {
        if (c == '\'') {
            inString = !inString;
        }
        if (inString && c != '\'') {
            continue;
        }
        if (std::isspace(static_cast<unsigned char>(c)) != 0) {
            afterBlank = true;
            continue;
        }
        const bool begins = isOneOf(before, "(,=;") || (before == '.' && dotBegins);
        const bool ends = isOneOf(c, ",)=;");
        const bool sameWord = !afterBlank && !isOneOf(before, ")'*$") && c != '(' &&
                              (isLetter(before) || before == '_' || !isLetter(c) || c == 'E');
        const bool opens = c == '(' && (isLetter(before) || before == '_');
        const bool closesString = c == '\'' && before == '\'';
        if (c == '/' || !(begins || ends || sameWord || opens || closesString)) {
            return true;
        }
        dotBegins = c == '.' && isOneOf(before, "(,=");
        before = c;
        afterBlank = false;
    }
    return inString;
}

/// The same instances of the same types are there, with as many parameters each; all the same but
/// those of long lists.
void shorten(const ExchangeFile& file, const std::string& text) {
    const bool stray = mayHoldStrayText(text);
    const std::string shortened = withShortLists(text);
    Check(shortened.size() <= text.size(), "lists become shorter");
    Check(withShortLists(shortened) == shortened, "short lists stay");
    const ExchangeFile other = ExchangeFile::FromText(shortened);
    Check(other.OfTypeEnding("") == file.OfTypeEnding(""), "every instance is kept");
    for (const EntityNumber number : file.OfTypeEnding("")) {
        const ExchangeInstance one = file.Get(number);
        const ExchangeInstance two = other.Get(number);
        Check(one.parts.size() == two.parts.size(), "every part is kept");
        for (std::size_t i = 0; i < one.parts.size(); ++i) {
            Check(one.parts[i].type == two.parts[i].type, "types are kept");
            const auto& values = one.parts[i].parameters.items;
            const auto& others = two.parts[i].parameters.items;
            Check(stray || std::equal(values.begin(), values.end(), others.begin(), others.end(),
                                      isShortened),
                  "parameters are kept, lists in part");
        }
    }
}

void run(const std::string& text) {
    const ExchangeFile file = ExchangeFile::FromText(text);
    walk(file);
    const Document first = read(file);
    const Document second = read(ExchangeFile::FromText(text));
    const std::string bytes = toBytes(first);
    Check(bytes == toBytes(second), "the same text is read the same");
    Check(bytes == toBytes(readDocument(bytes)), "what is read holds together and travels whole");
    decodeExchangeText(text);
    schemaName(text);
    shorten(file, text);
}

// --- mutations ----------------------------------------------------------------------------------

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWord(char c) {
    return (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_';
}

/// A piece of the text, by place and length.
struct Piece {
    std::size_t begin = 0;
    std::size_t size = 0;
};

/// Pieces that make sense as one: "#12", "12.5", a keyword, a list, a whole instance.
class Pieces {
public:
    Pieces(const std::string& text, std::minstd_rand& random) : _text(text), _random(random) {}

    Piece Any() {
        if (_text.empty()) {
            return {};
        }
        const std::size_t start = _random() % _text.size();
        switch (_random() % 4) {
            case 0:
                return Run(_text.find('#', start), [](char c) { return isDigit(c) || c == '#'; });
            case 1:
                return Run(_text.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", start), isWord);
            case 2:
                return Run(_text.find_first_of("0123456789-.", start),
                           [](char c) { return isDigit(c) || c == '.' || c == '-' || c == 'E'; });
            default:
                return _random() % 2 == 0 ? List(_text.find('(', start)) : Instance(start);
        }
    }

    /// Of the same kind where there is one behind it, for exchanges that keep the form.
    Piece Like(const Piece& piece) {
        for (int attempt = 0; attempt < 8; ++attempt) {
            const Piece other = Any();
            if (other.size > 0 && piece.size > 0 &&
                isWord(_text[other.begin]) == isWord(_text[piece.begin])) {
                return other;
            }
        }
        return Any();
    }

private:
    template <typename Belongs>
    Piece Run(std::size_t begin, const Belongs& belongs) const {
        if (begin == std::string::npos) {
            return {};
        }
        std::size_t end = begin;
        while (end < _text.size() && belongs(_text[end])) {
            ++end;
        }
        return {begin, end - begin};
    }

    Piece List(std::size_t begin) const {
        if (begin == std::string::npos) {
            return {};
        }
        int depth = 0;
        for (std::size_t end = begin; end < _text.size(); ++end) {
            depth += _text[end] == '(' ? 1 : _text[end] == ')' ? -1 : 0;
            if (depth == 0) {
                return {begin, end + 1 - begin};
            }
        }
        return {begin, _text.size() - begin};
    }

    Piece Instance(std::size_t start) const {
        const std::size_t before = _text.rfind(';', start);
        const std::size_t begin = before == std::string::npos ? 0 : before + 1;
        const std::size_t end = std::min(_text.find(';', begin), _text.size() - 1);
        return {begin, end + 1 - begin};
    }

    const std::string& _text;
    std::minstd_rand& _random;
};

const char* const replacements[] = {
    "0",  "-1",    "1.E308", "-1.E308", "1.E-308", "9999999999", "18446744073709551615", "0.5", "$",
    "*",  "#0",    "()",     "''",      ".T.",     ".F.",        "\\X2\\00E9\\X0\\",     "3",   "2",
    ",$", "/*,*/", ""};

std::string mutated(std::string text, std::minstd_rand& random) {
    Pieces pieces(text, random);
    const Piece target = pieces.Any();
    switch (random() % 4) {
        case 0: {
            const std::string other = replacements[random() % std::size(replacements)];
            return text.replace(target.begin, target.size, other);
        }
        case 1: {
            const Piece like = pieces.Like(target);
            const std::string other = text.substr(like.begin, like.size);
            return text.replace(target.begin, target.size, other);
        }
        case 2: {
            const std::string twice = text.substr(target.begin, target.size);
            const bool separated = !twice.empty() && twice.back() != ';';
            return text.insert(target.begin + target.size, (separated ? "," : "") + twice);
        }
        default:
            return text.erase(target.begin, target.size);
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
    std::minstd_rand random(seed);
    if (random() % 4 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    std::string text(reinterpret_cast<const char*>(data), size);
    for (unsigned left = 1 + static_cast<unsigned>(random() % 3); left > 0; --left) {
        text = mutated(std::move(text), random);
    }
    text.resize(std::min(text.size(), maxSize));
    std::copy(text.begin(), text.end(), data);
    return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    run(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
