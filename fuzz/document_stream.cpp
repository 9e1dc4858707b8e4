/// @file
/// What kesview takes from the process that reads a file: frames on a pipe in any pieces, and the
/// document in them. Whatever the bytes, there is an answer or the error that is promised, and a
/// document that was accepted holds together and makes the same bytes again.

#include "Input.h"
#include "document/CheckDocument.h"
#include "document/Document.h"
#include "document/DocumentStream.h"
#include "reading/Frames.h"
#include "reading/ReaderArguments.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

using namespace kesview;
using Fuzz::Check;
using Fuzz::Input;

namespace {

constexpr std::size_t largestDocument = 1 << 16;

std::string rest(Input& input) {
    std::string bytes;
    while (!input.IsAtEnd()) {
        bytes += static_cast<char>(input.Byte());
    }
    return bytes;
}

void checkStream(const Document& document, const std::string& bytes) {
    checkDocument(document);
    Check(streamSize(document) == bytes.size(), "the size that is told beforehand");
    Check(toBytes(document) == bytes, "an accepted stream is what would have been written");
    std::string gathered;
    writeDocument(document,
                  [&](const char* data, std::size_t size) { gathered.append(data, size); });
    Check(gathered == bytes, "the pieces make the whole");
}

/// The bytes as they are, or behind the head that every stream has.
void readStream(Input& input) {
    static const std::string empty = toBytes(Document());
    constexpr std::size_t head = sizeof(std::uint64_t) + sizeof(std::uint32_t);
    const bool withHead = input.Flag();
    const std::string bytes = (withHead ? empty.substr(0, head) : std::string()) + rest(input);
    std::optional<Document> document;
    try {
        document = readDocument(bytes);
    } catch (const std::runtime_error&) {
        return;
    }
    checkStream(*document, bytes);
}

// --- a document of every field ------------------------------------------------------------------

std::string text(Input& input) {
    std::string made;
    for (unsigned left = input.Below(12); left > 0; --left) {
        made += static_cast<char>(input.Byte());
    }
    return made;
}

template <typename Item, typename Make>
std::vector<Item> some(Input& input, const Make& make) {
    std::vector<Item> items;
    for (unsigned left = input.IsAtEnd() ? 0 : input.Below(4); left > 0; --left) {
        items.push_back(make(input));
    }
    return items;
}

template <typename Number>
std::vector<Number> numbers(Input& input, bool wholeTriples) {
    std::vector<Number> made(wholeTriples ? 3 * input.Below(4) : input.Below(8));
    for (Number& number : made) {
        number = input.Flag() ? input.Any<Number>() : static_cast<Number>(input.Below(4));
    }
    return made;
}

std::optional<Color> color(Input& input) {
    return input.Flag() ? std::make_optional(Color{input.Byte(), 1, 2, input.Byte()})
                        : std::nullopt;
}

Face face(Input& input) {
    Face made;
    made.id = input.Byte();
    made.name = text(input);
    made.color = color(input);
    made.points = numbers<float>(input, input.Flag());
    made.normals = input.Flag() ? made.points : numbers<float>(input, true);
    made.triangles = numbers<std::int32_t>(input, input.Flag());
    return made;
}

Edge edge(Input& input) {
    return {input.Byte(), text(input), color(input), numbers<float>(input, input.Flag())};
}

Body body(Input& input) {
    Body made;
    made.id = input.Byte();
    made.kind = static_cast<BodyKind>(input.Below(5));
    made.hidden = input.Flag();
    made.faces = some<Face>(input, face);
    made.edges = some<Edge>(input, edge);
    made.points = numbers<float>(input, input.Flag());
    made.layers = some<std::string>(input, text);
    return made;
}

Component component(Input& input) {
    Component made;
    made.id = input.Byte();
    made.product = input.Below(5);
    made.parentFromChild[3] = input.Any<double>();
    made.color = color(input);
    return made;
}

Product product(Input& input) {
    Product made;
    made.name = text(input);
    made.bodies = some<Body>(input, body);
    made.components = some<Component>(input, component);
    return made;
}

Annotation annotation(Input& input) {
    Annotation made;
    made.key = text(input);
    made.kind = static_cast<AnnotationKind>(input.Below(8));
    made.attributes[text(input)] = text(input);
    made.attributes[text(input)] = text(input);
    made.datums = some<std::string>(input, text);
    made.lines = some<std::vector<float>>(
        input, [](Input& from) { return numbers<float>(from, from.Flag()); });
    made.areas = some<FilledArea>(input, [](Input& from) {
        return FilledArea{numbers<float>(from, true), numbers<std::int32_t>(from, from.Flag())};
    });
    made.semantic = input.Flag();
    return made;
}

SavedView savedView(Input& input) {
    SavedView made;
    made.name = text(input);
    made.viewAngle = input.Any<double>();
    if (input.Flag()) {
        made.clipping = SavedView::Plane();
    }
    made.members = some<std::string>(input, text);
    return made;
}

Document document(Input& input) {
    Document made;
    made.format = text(input);
    made.millimetresPerUnit = input.Any<double>();
    made.products = some<Product>(input, product);
    made.roots = some<Component>(input, component);
    made.annotations = some<Annotation>(input, annotation);
    made.views = some<SavedView>(input, savedView);
    made.findings = some<Finding>(input, [](Input& from) {
        return Finding{static_cast<Finding::Severity>(from.Below(3)), text(from), text(from),
                       text(from), from.Byte()};
    });
    return made;
}

/// True when a component leads from the product to itself; the products of @p path are on the way.
bool leadsBack(const Document& document, std::size_t product, std::vector<std::size_t>& path) {
    if (std::find(path.begin(), path.end(), product) != path.end()) {
        return true;
    }
    path.push_back(product);
    for (const Component& next : document.products[product].components) {
        if (leadsBack(document, next.product, path)) {
            return true;
        }
    }
    path.pop_back();
    return false;
}

bool areTriangles(const std::vector<std::int32_t>& triangles, std::size_t points) {
    return triangles.size() % 3 == 0 &&
           std::all_of(triangles.begin(), triangles.end(), [points](std::int32_t index) {
               return index >= 0 && static_cast<std::size_t>(index) < points;
           });
}

/// Whether it holds together, found out by the slowest way.
bool isSound(const Document& document) {
    bool sound = true;
    const auto check = [&sound](bool holds) { sound = sound && holds; };
    const auto checkUses = [&](const std::vector<Component>& components) {
        for (const Component& one : components) {
            check(one.product < document.products.size());
        }
    };
    checkUses(document.roots);
    for (const Product& one : document.products) {
        checkUses(one.components);
        for (const Body& body : one.bodies) {
            check(body.points.size() % 3 == 0);
            for (const Face& face : body.faces) {
                check(face.points.size() % 3 == 0);
                check(face.normals.empty() || face.normals.size() == face.points.size());
                check(areTriangles(face.triangles, face.points.size() / 3));
            }
            for (const Edge& edge : body.edges) {
                check(edge.points.size() % 3 == 0);
            }
        }
    }
    for (std::size_t i = 0; sound && i < document.products.size(); ++i) {
        std::vector<std::size_t> path;
        check(!leadsBack(document, i, path));
    }
    for (const Annotation& one : document.annotations) {
        for (const auto& line : one.lines) {
            check(line.size() % 3 == 0);
        }
        for (const FilledArea& area : one.areas) {
            check(areTriangles(area.triangles, area.points.size() / 3));
        }
    }
    return sound;
}

/// A document that holds together travels whole, any other is refused; so is one cut short.
void sendDocument(Input& input) {
    const Document sent = document(input);
    const std::string bytes = toBytes(sent);
    std::optional<Document> received;
    try {
        received = readDocument(bytes);
    } catch (const std::runtime_error&) {
    }
    Check(received.has_value() == isSound(sent), "what holds together is accepted, nothing else");
    if (received) {
        checkStream(*received, bytes);
    }
    const std::size_t kept = input.Any<std::uint32_t>() % bytes.size();
    try {
        readDocument(std::string_view(bytes).substr(0, kept));
        Check(false, "a stream that was cut is refused");
    } catch (const std::runtime_error&) {
    }
}

// --- frames -------------------------------------------------------------------------------------

/// The word that every frame begins with, learnt from one.
std::uint32_t frameMagic() {
    int ends[2] = {};
    FrameHeader header;
    Check(pipe(ends) == 0, "a pipe for one frame");
    FrameWriter(ends[1]).WriteProgress("", 0);
    Check(read(ends[0], &header, sizeof header) == sizeof header, "the head of a frame");
    close(ends[0]);
    close(ends[1]);
    return header.magic;
}

std::string frame(std::uint32_t kind, std::uint64_t size, const std::string& content) {
    static const std::uint32_t magic = frameMagic();
    const FrameHeader header{magic, kind, size};
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + content;
}

/// Progress, failures and documents, sound or not; at times with a wrong size or no frame at all.
std::string frames(Input& input) {
    std::string stream;
    for (unsigned left = 1 + input.Below(4); left > 0; --left) {
        const unsigned kind = input.Below(6);
        std::string content;
        if (kind == 3) {
            content = toBytes(document(input));
        } else {
            const unsigned size = input.Below(24);
            for (unsigned i = 0; i < size; ++i) {
                content += static_cast<char>(input.Byte());
            }
        }
        const std::uint64_t size =
            input.Below(8) == 0 ? input.Any<std::uint64_t>() : content.size();
        stream += kind == 5 ? content : frame(kind, size, content);
    }
    return stream;
}

struct Told {
    std::vector<std::string> stages;
    std::string answer;  ///< or the error
};

/// Feeds the stream in pieces of the sizes in turn, from buffers of just that size.
Told parse(const std::string& stream, const std::vector<std::size_t>& sizes) {
    Told told;
    FrameParser parser(largestDocument);
    std::size_t at = 0;
    try {
        for (std::size_t turn = 0; at < stream.size() && !parser.IsDone(); ++turn) {
            const auto [target, room] = parser.Wanted();
            Check(room > 0, "the parser wants something until it is done");
            const std::size_t size =
                std::min({room, stream.size() - at, sizes[turn % sizes.size()]});
            std::memcpy(target, stream.data() + at, size);
            at += size;
            parser.Took(size);
            if (const auto progress = parser.TakeProgress()) {
                Check(progress->fraction >= 0 && progress->fraction <= 1, "a fraction");
                told.stages.push_back(progress->stage);
            }
        }
        if (parser.IsDone()) {
            told.answer = toBytes(parser.Result());
        }
    } catch (const ReadError& error) {
        const int failure = static_cast<int>(error.Failure());
        Check(failure >= 0 && failure <= static_cast<int>(ReadFailure::Interrupted), "a failure");
        told.answer = error.what();
    } catch (const std::runtime_error& error) {
        told.answer = error.what();
    }
    return told;
}

/// The same by reading all of it at once, frame by frame.
Told expected(const std::string& stream) {
    static const std::string refusal = parse(std::string(sizeof(FrameHeader), '?'), {1}).answer;
    static const std::uint32_t magic = frameMagic();
    Told told;
    std::string_view left = stream;
    while (left.size() >= sizeof(FrameHeader)) {
        FrameHeader header;
        std::memcpy(&header, left.data(), sizeof header);
        left.remove_prefix(sizeof header);
        const std::uint64_t limit = header.kind == 3 ? largestDocument : 1 << 20;
        if (header.magic != magic || header.kind < 1 || header.kind > 3 || header.size > limit) {
            told.answer = refusal;
            return told;
        }
        if (left.size() < header.size) {
            return told;
        }
        const std::string_view content = left.substr(0, static_cast<std::size_t>(header.size));
        left.remove_prefix(content.size());
        const std::size_t head = header.kind == 1 ? 8 : header.kind == 2 ? 4 : 0;
        std::int32_t failure = 0;
        double fraction = 0;
        if (content.size() < head) {
            told.answer = refusal;
            return told;
        }
        if (header.kind == 1) {
            std::memcpy(&fraction, content.data(), sizeof fraction);
            if (fraction >= 0 && fraction <= 1) {
                told.stages.emplace_back(content.substr(head));
                continue;
            }
            told.answer = refusal;
        } else if (header.kind == 2) {
            std::memcpy(&failure, content.data(), sizeof failure);
            const bool known =
                failure >= 0 && failure <= static_cast<int>(ReadFailure::Interrupted);
            const std::string message(content.substr(head));
            told.answer = known ? message.c_str() : refusal;  // as what(), which ends at a zero
        } else {
            try {
                told.answer = toBytes(readDocument(content));
            } catch (const std::runtime_error& error) {
                told.answer = error.what();
            }
        }
        return told;
    }
    return told;
}

void receiveFrames(Input& input) {
    std::vector<std::size_t> sizes;
    for (unsigned left = 1 + input.Below(6); left > 0; --left) {
        sizes.push_back(1 + input.Byte());
    }
    const std::string stream = input.Flag() ? frames(input) : rest(input);
    const Told whole = parse(stream, {stream.size() + 1});
    const Told pieces = parse(stream, sizes);
    Check(whole.stages == pieces.stages && whole.answer == pieces.answer,
          "what is told does not depend on the pieces");
    const Told read = expected(stream);
    Check(whole.stages == read.stages && whole.answer == read.answer, "what frames tell");
}

// --- the reader's command line ------------------------------------------------------------------

/// Words are refused, or mean what makes words of the same meaning.
void readArguments(Input& input) {
    static const char* const known[] = {"STEP", "IGES", "BREP", "STL", "0", "1", "0.5", "1e308"};
    std::vector<std::string> words;
    for (unsigned left = input.Flag() ? 6 : input.Below(8); left > 0; --left) {
        words.push_back(input.Flag() ? known[input.Below(8)] : text(input));
    }
    std::optional<ReaderArguments> arguments;
    try {
        arguments = fromCommandLine(words);
    } catch (const std::runtime_error&) {
        return;
    }
    const ReaderArguments again = fromCommandLine(toCommandLine(*arguments));
    const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    Check(again.path == arguments->path && again.format == arguments->format &&
              again.options.withPmi == arguments->options.withPmi &&
              again.options.withTessellation == arguments->options.withTessellation &&
              same(again.options.deflection, arguments->options.deflection) &&
              same(again.options.angle, arguments->options.angle),
          "the words of accepted arguments mean the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    switch (input.Below(4)) {
        case 0:
            readStream(input);
            break;
        case 1:
            sendDocument(input);
            break;
        case 2:
            receiveFrames(input);
            break;
        default:
            readArguments(input);
            break;
    }
    return 0;
}
