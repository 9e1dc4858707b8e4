/// @file
/// See PmiDrawing.h.

#include "reading/part21/PmiDrawing.h"

#include "reading/AbsurdLength.h"
#include "reading/part21/FilledOutline.h"
#include "reading/part21/PresentationStyle.h"
#include "reading/part21/TessellatedPmi.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace kesview {
namespace {

constexpr int deepestItem = 8;

class Drawer {
public:
    Drawer(const ExchangeGeometry& geometry, const ExchangeFile& file, PmiDrawing& drawing)
        : _geometry(geometry), _file(file), _drawing(drawing) {}

    void Occurrence(const ExchangeInstance& occurrence) {
        const ExchangeValue& styles = occurrence.Attribute("STYLED_ITEM", 0, 1);
        if (!_drawing.color) {
            _drawing.color = findStyleColor(_file, styles);
        }
        if (occurrence.HasTypeEnding("_WITH_LEADER_LINE")) {
            LeaderLines(occurrence);
        }
        _textHeight = findTextHeight(_file, styles).value_or(3.5 / _geometry.LengthScale()) *
                      _geometry.LengthScale();
        if (!occurrence.HasTypeEnding("PLACEHOLDER_OCCURRENCE") &&
            !occurrence.HasTypeEnding("_WITH_LEADER_LINE")) {
            Item(occurrence.Attribute("STYLED_ITEM", 1, 2).reference, 0);
        }
    }

private:
    void Unread(const ExchangeInstance& item) {
        ++_drawing.unread[item.parts.empty() ? "nothing" : item.parts.front().type];
    }

    /// Each once: sets may hold each other.
    void Item(EntityNumber number, int depth) {
        if (!_met.insert(number).second) {
            return;
        }
        const ExchangeInstance item = _file.Get(number);
        if (depth > deepestItem) {
            Unread(item);
        } else if (item.HasTypeEnding("GEOMETRIC_CURVE_SET") || item.Is("GEOMETRIC_SET")) {
            for (const EntityNumber element : item.Attribute("GEOMETRIC_SET", 0, 1).References()) {
                Item(element, depth + 1);
            }
        } else if (item.Is("ANNOTATION_FILL_AREA")) {
            Fill(item);
        } else if (item.HasTypeEnding("TEXT_LITERAL") || item.Is("TEXT_LITERAL_WITH_EXTENT")) {
            Text(item);
        } else if (isTessellated(item)) {
            appendTessellated(_geometry, _file, item, _drawing);
        } else if (auto line = _geometry.Curve(number)) {
            _drawing.lines.push_back(std::move(*line));
        } else if (!item.Is("CARTESIAN_POINT")) {  // points only mark where something stands
            Unread(item);
        }
    }

    void Fill(const ExchangeInstance& item) {
        std::vector<std::vector<Vector>> outlines;
        for (const EntityNumber boundary :
             item.Attribute("ANNOTATION_FILL_AREA", 0, 1).References()) {
            if (auto outline = _geometry.Curve(boundary)) {
                outlines.push_back(std::move(*outline));
            } else {
                Unread(_file.Get(boundary));
            }
        }
        if (auto area = fillOutlines(outlines)) {
            _drawing.areas.push_back(std::move(*area));
        } else {
            Unread(item);
        }
    }

    void Text(const ExchangeInstance& item) {
        const auto frame = _geometry.Frame(item.Attribute("TEXT_LITERAL", 1, 2).reference);
        const std::string& literal = item.Attribute("TEXT_LITERAL", 0, 1).text;
        if (!frame || literal.empty()) {
            Unread(item);
            return;
        }
        PlacedText text;
        text.text = literal;
        text.position = frame->origin;
        text.u = frame->x;
        text.v = frame->y;
        text.height = _textHeight;
        _drawing.texts.push_back(std::move(text));
    }

    void LeaderLines(const ExchangeInstance& occurrence) {
        for (const EntityNumber leader : occurrence.References()) {
            const ExchangeInstance line = _file.Get(leader);
            if (!line.HasTypeEnding("_LEADER_LINE")) {
                continue;
            }
            std::vector<Vector> points;
            for (const EntityNumber place : line.References()) {
                const ExchangeInstance point = _file.Get(place);
                if (const auto at =
                        _geometry.Coordinates(point.Attribute("CARTESIAN_POINT", 0, 1))) {
                    points.push_back(*at);
                }
            }
            if (points.size() > 1) {
                _drawing.lines.push_back(std::move(points));
            } else {
                Unread(line);
            }
        }
    }

    const ExchangeGeometry& _geometry;
    const ExchangeFile& _file;
    PmiDrawing& _drawing;
    double _textHeight = 3.5;
    std::set<EntityNumber> _met;
};

bool isSound(const Vector& point) {
    return std::all_of(point.begin(), point.end(), isSoundLength);
}

bool isSound(const std::vector<Vector>& points) {
    return std::all_of(points.begin(), points.end(),
                       [](const Vector& point) { return isSound(point); });
}

/// Of what stands at @p begin and after it.
template <typename Parts, typename IsSound>
void leaveOutAbsurd(Parts& parts, std::size_t begin, IsSound isSound, PmiDrawing& drawing) {
    const auto first = parts.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto absurd = std::stable_partition(first, parts.end(), isSound);
    if (absurd != parts.end()) {
        drawing.unread["absurdly large coordinates"] +=
            static_cast<std::uint64_t>(parts.end() - absurd);
        parts.erase(absurd, parts.end());
    }
}

}  // namespace

bool isOccurrence(const ExchangeInstance& instance) {
    return std::any_of(instance.parts.begin(), instance.parts.end(), [](const auto& part) {
        const std::string& type = part.type;
        return type.find("ANNOTATION_") != std::string::npos &&
               type.find("_OCCURRENCE") != std::string::npos &&
               type.find("RELATIONSHIP") == std::string::npos &&
               type.find("ASSOCIATIVITY") == std::string::npos;
    });
}

void drawOccurrence(const ExchangeGeometry& geometry, const ExchangeFile& file, EntityNumber number,
                    PmiDrawing& drawing) {
    const std::size_t lines = drawing.lines.size();
    const std::size_t areas = drawing.areas.size();
    const std::size_t texts = drawing.texts.size();
    Drawer(geometry, file, drawing).Occurrence(file.Get(number));
    leaveOutAbsurd(
        drawing.lines, lines, [](const auto& line) { return isSound(line); }, drawing);
    leaveOutAbsurd(
        drawing.areas, areas, [](const auto& area) { return isSound(area.points); }, drawing);
    leaveOutAbsurd(
        drawing.texts, texts, [](const auto& text) { return isSound(text.position); }, drawing);
}

}  // namespace kesview
