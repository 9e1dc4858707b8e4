/// @file
/// kesview's own readers of STL files, of text and binary, and what tells the kinds of files apart.
/// Files that were written here are read as they were meant; of any other bytes, triangles come out
/// on points that there are, or the error that is promised.

#include "InMemoryFile.h"
#include "Input.h"
#include "Numbers.h"
#include "document/Document.h"
#include "reading/FileFormat.h"
#include "reading/ReadFile.h"
#include "reading/occ/StlAscii.h"
#include "reading/occ/StlBinary.h"
#include "reading/occ/StlTriangles.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using namespace kesview;
using Fuzz::Check;
using Fuzz::Input;
using Fuzz::Numbers;

namespace {

std::string rest(Input& input) {
    std::string bytes;
    while (!input.IsAtEnd()) {
        bytes += static_cast<char>(input.Byte());
    }
    return bytes;
}

FileFormat formatOf(const std::string& content) {
    return detectFormat(Fuzz::InMemoryFile(content).Path());
}

bool isSame(const StlSolid& a, const StlSolid& b) {
    if (a.name != b.name || a.triangles.size() != b.triangles.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.triangles.size(); ++i) {
        for (std::size_t corner = 0; corner < 3; ++corner) {
            if (!Fuzz::Same(a.triangles[i][corner].data(), b.triangles[i][corner].data(), 3)) {
                return false;
            }
        }
    }
    return true;
}

bool areSame(const std::vector<StlSolid>& a, const std::vector<StlSolid>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

// --- the face of a solid ------------------------------------------------------------------------

bool isAbsurd(const StlTriangle& triangle) {
    for (const StlCorner& corner : triangle) {
        for (const float length : corner) {
            if (!(length > -1e12F && length < 1e12F)) {
                return true;
            }
        }
    }
    return false;
}

StlCorner pointOf(const Face& face, std::size_t place) {
    Check(place < face.triangles.size(), "three indices for each triangle that is kept");
    const std::int32_t index = face.triangles[place];
    Check(index >= 0 && 3 * static_cast<std::size_t>(index) + 2 < face.points.size(),
          "an index of a point");
    const float* const point = face.points.data() + 3 * static_cast<std::size_t>(index);
    return {point[0], point[1], point[2]};
}

/// Each triangle in its turn is kept whole or counted as lost, and no two points are one place.
void checkFace(const StlSolid& solid) {
    Face face;
    const StlLosses losses = fillFace(solid, face);
    std::uint64_t absurd = 0;
    std::uint64_t degenerate = 0;
    std::size_t place = 0;
    for (const StlTriangle& triangle : solid.triangles) {
        if (isAbsurd(triangle)) {
            ++absurd;
            continue;
        }
        bool kept = place + 3 <= face.triangles.size();
        for (std::size_t corner = 0; kept && corner < 3; ++corner) {
            kept = pointOf(face, place + corner) == triangle[corner];
        }
        const bool flat =
            triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[2] == triangle[0];
        Check(!(kept && flat), "a triangle with two equal corners is left out");
        place += kept ? 3U : 0U;
        degenerate += kept ? 0U : 1U;
    }
    Check(place == face.triangles.size(), "no triangle but those of the solid");
    Check(losses.absurd == absurd && losses.degenerate == degenerate, "what is lost is counted");
    std::vector<StlCorner> points;
    for (std::size_t i = 0; i + 3 <= face.points.size(); i += 3) {
        points.push_back({face.points[i], face.points[i + 1], face.points[i + 2]});
    }
    std::sort(points.begin(), points.end());
    Check(std::adjacent_find(points.begin(), points.end()) == points.end(), "points are welded");
}

StlTriangle nextTriangle(Numbers<float>& numbers) {
    StlTriangle triangle{};
    for (StlCorner& corner : triangle) {
        numbers.Fill(corner.data(), 3);
    }
    return triangle;
}

// --- files of text ------------------------------------------------------------------------------

/// Writes a file of text as a careless program would: any case, any blanks, things missing.
class TextWriter {
public:
    explicit TextWriter(Input& input) : _input(input), _numbers(input) {}

    void Write() {
        for (unsigned left = 1 + _input.Below(3); left > 0 && !expected.isTruncated; --left) {
            Solid();
        }
    }

    std::string text;
    StlText expected;

private:
    void Solid() {
        const std::string name = _input.Flag() ? "part " + std::to_string(_input.Byte()) : "";
        Word("solid");
        text += (name.empty() ? "" : " " + name) + "\n";
        expected.solids.push_back({name, {}});
        for (unsigned left = _input.Below(5); left > 0; --left) {
            Facet();
            if (expected.isTruncated) {
                return;
            }
        }
        if (_input.Below(16) == 0) {
            expected.isTruncated = true;
            return;
        }
        Blank();
        Word("endsolid");
        text += name.empty() ? "\n" : " " + name + "\n";
    }

    void Facet() {
        Blank();
        Word("facet");
        text += _input.Flag() ? " normal 0 0 1\nouter loop" : "";
        StlTriangle triangle = nextTriangle(_numbers);
        const unsigned corners = _input.Below(8) == 0 ? _input.Below(6) : 3;
        bool sound = corners == 3;
        for (unsigned i = 0; i < corners; ++i) {
            sound = Vertex(triangle[i % 3]) && sound;
        }
        text += _input.Flag() ? "\n endloop" : "";
        if (_input.Below(32) == 0) {
            expected.isTruncated = true;
        } else {
            Blank();
            Word("endfacet");
        }
        if (sound) {
            expected.solids.back().triangles.push_back(triangle);
        } else {
            ++expected.damagedFacets;
        }
    }

    /// False where it is damaged; @p corner becomes what is written.
    bool Vertex(StlCorner& corner) {
        Blank();
        Word("vertex");
        const unsigned damage = _input.Below(32);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Blank();
            if (damage == axis) {
                text += _input.Flag() ? "1.5x" : "";
                continue;
            }
            static const char* const formats[] = {"%.9g", "%+.9e", "%.3f", "%.17G"};
            char number[64];
            std::snprintf(number, sizeof number, formats[_input.Below(4)], double{corner[axis]});
            text += number;
            corner[axis] = static_cast<float>(std::strtod(number, nullptr));
        }
        return damage > 2;
    }

    void Word(const std::string& word) {
        const unsigned form = _input.Below(4);
        for (const char letter : word) {
            const bool upper = form == 1 || (form == 2 && _input.Flag());
            text += upper ? static_cast<char>(letter - 'a' + 'A') : letter;
        }
    }

    void Blank() {
        static const char* const blanks[] = {" ", "\n", "\t", "\r\n", "  \v", "\f"};
        text += blanks[_input.Below(6)];
    }

    Input& _input;
    Numbers<float> _numbers;
};

void checkParsed(const std::string& text, const StlText& parsed) {
    for (const StlSolid& solid : parsed.solids) {
        checkFace(solid);
    }
    std::string upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char letter) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    });
    StlText again = parseStlText(upper);
    for (std::size_t i = 0; i < again.solids.size() && i < parsed.solids.size(); ++i) {
        again.solids[i].name = parsed.solids[i].name;
    }
    Check(areSame(again.solids, parsed.solids) && again.isTruncated == parsed.isTruncated &&
              again.damagedFacets == parsed.damagedFacets,
          "the case of letters means nothing");
}

void readWrittenText(Input& input) {
    TextWriter writer(input);
    writer.Write();
    const StlText parsed = parseStlText(writer.text);
    Check(areSame(parsed.solids, writer.expected.solids), "solids of a text");
    Check(parsed.damagedFacets == writer.expected.damagedFacets, "damaged facets");
    Check(parsed.isTruncated == writer.expected.isTruncated, "a text that was cut");
    checkParsed(writer.text, parsed);
    const bool hasBody = parsed.damagedFacets > 0 || !parsed.isTruncated;
    Check(!hasBody || formatOf(writer.text) == FileFormat::Stl, "a text with facets is STL");
}

// --- binary files -------------------------------------------------------------------------------

void append(std::string& bytes, float number) {
    char raw[sizeof number];
    std::memcpy(raw, &number, sizeof number);
    bytes.append(raw, sizeof number);
}

/// A header, so many triangles as were asked for, and what stands behind them.
void readWrittenBinary(Input& input) {
    Numbers<float> numbers(input);
    std::string name;
    for (unsigned left = input.Below(90); left > 0 && !input.IsAtEnd(); --left) {
        name += static_cast<char>(input.Flag() ? ' ' + input.Below(95) : input.Byte());
    }
    std::string bytes = name.substr(0, 80);
    bytes.resize(80, input.Flag() ? ' ' : '\0');
    StlSolid expected;
    expected.name = std::string(bytes.c_str());
    expected.name.erase(expected.name.find_last_not_of(' ') + 1);
    if (std::any_of(expected.name.begin(), expected.name.end(),
                    [](char c) { return c < ' ' || c > '~'; })) {
        expected.name.clear();
    }
    const std::uint32_t count = input.Below(5);
    bytes += {static_cast<char>(count), 0, 0, 0};
    for (std::uint32_t i = 0; i < count; ++i) {
        expected.triangles.push_back(nextTriangle(numbers));
        bytes.append(12, '\0');
        for (const StlCorner& corner : expected.triangles.back()) {
            for (const float length : corner) {
                append(bytes, length);
            }
        }
        bytes.append(2, static_cast<char>(input.Byte()));
    }
    Check(isExactStlBinary(bytes), "a binary file of the right size");
    Check(isSame(parseStlBinary(bytes), expected), "triangles of a binary file");
    checkFace(expected);

    const std::size_t size = input.Any<std::uint16_t>() % (bytes.size() + 8);
    const std::size_t missing = size >= bytes.size() ? 0
                                : size < 84          ? 84 - size
                                                     : bytes.size() - size;
    const std::string other = size < bytes.size() ? bytes.substr(0, size) : bytes + "behind";
    Check(!isExactStlBinary(other), "a binary file of another size");
    try {
        Check(isSame(parseStlBinary(other), expected) && missing == 0, "bytes behind do no harm");
    } catch (const ReadError& error) {
        const std::string told = " " + std::to_string(missing) + " bytes ";
        Check(missing > 0 && error.Failure() == ReadFailure::Damaged &&
                  std::string(error.what()).find(told) != std::string::npos,
              "how many bytes are missing");
    }
}

// --- any bytes ----------------------------------------------------------------------------------

void readAny(Input& input) {
    const bool proved = input.Flag();
    const std::string bytes = rest(input);
    const StlText parsed = parseStlText(bytes);
    checkParsed(bytes, parsed);
    const FileFormat format = formatOf(bytes);
    Check(!nameOf(format).empty(), "a format has a name");
    if (proved) {
        Check(formatOf(" /* " + std::to_string(bytes.size()) + " */\nISO-10303-21 ;" + bytes) ==
                  FileFormat::Step,
              "comments before and blanks behind the first word of a STEP file");
    }
    try {
        checkFace(parseStlBinary(bytes));
        Check(bytes.size() >= 84, "there was a header");
    } catch (const ReadError&) {
        Check(!isExactStlBinary(bytes), "a file of the right size is read");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    switch (input.Below(4)) {
        case 0:
            readAny(input);
            break;
        case 1:
            readWrittenBinary(input);
            break;
        default:
            readWrittenText(input);
            break;
    }
    return 0;
}
