/// @file
/// See ExchangePmi.h.

#include "reading/part21/ExchangePmi.h"

#include "reading/part21/AspectLinks.h"
#include "reading/part21/DatumRecords.h"
#include "reading/part21/DimensionRecords.h"
#include "reading/part21/ExchangeViews.h"
#include "reading/part21/NoteTexts.h"
#include "reading/part21/PmiCallouts.h"
#include "reading/part21/PmiText.h"
#include "reading/part21/ToleranceRecords.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace kesview {
namespace {

/// By which the reader's document counts what is only a drawing.
constexpr std::int32_t presentationTypeCode = 31;

std::string keyOf(EntityNumber number) {
    return "#" + std::to_string(number);
}

template <typename T>
void addOnce(std::vector<T>& values, const T& value) {
    if (std::find(values.begin(), values.end(), value) == values.end()) {
        values.push_back(value);
    }
}

class PmiReader {
public:
    PmiReader(const ExchangeFile& file, double millimetresPerUnit)
        : _file(file), _aspects(file), _notes(file), _millimetresPerUnit(millimetresPerUnit) {}

    ExchangePmi Read() {
        AddRecords(readDimensions(_file));
        AddRecords(readTolerances(_file));
        AddRecords(readDatums(_file, _aspects));
        for (PmiCallout& callout : readCallouts(_file, _millimetresPerUnit)) {
            AddCallout(callout);
        }
        for (std::size_t i = 0; i < _pmi.annotations.size(); ++i) {
            ShareDrawing(i);
        }
        for (ExchangeAnnotation& annotation : _pmi.annotations) {
            FinishAnnotation(annotation);
        }
        AddViews();
        return std::move(_pmi);
    }

private:
    void AddRecords(std::vector<PmiRecord> records) {
        for (PmiRecord& record : records) {
            std::vector<EntityNumber> geometry;
            EntityNumber product = 0;
            for (const EntityNumber target : record.targets) {
                Follow(target, geometry, product, 0);
            }
            if (record.kind == AnnotationKind::Datum && MergeDatum(record, geometry)) {
                continue;
            }
            _places[record.number] = _pmi.annotations.size();
            ExchangeAnnotation added;
            added.annotation.key = keyOf(record.number);
            added.annotation.kind = record.kind;
            added.annotation.type = record.type;
            added.annotation.typeCode = record.typeCode;
            added.annotation.label = record.label;
            added.annotation.text = record.text;
            added.annotation.attributes = std::move(record.attributes);
            added.annotation.semantic = true;
            added.geometry = std::move(geometry);
            added.product = product;
            _pmi.annotations.push_back(std::move(added));
            _records.push_back({std::move(record.datums), std::move(record.drawnWith)});
        }
    }

    /// A tolerance may apply to a dimension, which applies to aspects.
    void Follow(EntityNumber target, std::vector<EntityNumber>& geometry, EntityNumber& product,
                int depth) const {
        const auto dimension = _places.find(target);
        if (dimension != _places.end() && depth == 0) {
            const ExchangeAnnotation& other = _pmi.annotations[dimension->second];
            geometry.insert(geometry.end(), other.geometry.begin(), other.geometry.end());
            product = product == 0 ? other.product : product;
            return;
        }
        for (const EntityNumber item : _aspects.ItemsOf(target)) {
            addOnce(geometry, item);
        }
        product = product == 0 ? _aspects.ProductOf(target) : product;
    }

    bool MergeDatum(const PmiRecord& record, const std::vector<EntityNumber>& geometry) {
        for (std::size_t i = 0; i < _pmi.annotations.size(); ++i) {
            const ExchangeAnnotation& other = _pmi.annotations[i];
            if (other.annotation.kind == AnnotationKind::Datum &&
                other.annotation.label == record.label && !geometry.empty() &&
                other.geometry == geometry) {
                _places[record.number] = i;
                return true;
            }
        }
        return false;
    }

    /// The annotations that the callout presents: what the file links first, and a datum by its
    /// feature only where nothing else is meant.
    std::vector<std::size_t> OwnersOf(const PmiCallout& callout) const {
        std::vector<std::size_t> owners;
        bool property = false;
        for (const EntityNumber definition : callout.definitions) {
            const auto place = _places.find(definition);
            if (place != _places.end()) {
                addOnce(owners, place->second);
            }
            property = property || _notes.TextOf(definition).has_value();
        }
        if (!owners.empty() || property) {
            return owners;
        }
        for (const EntityNumber definition : callout.definitions) {
            if (!_file.Get(definition).HasTypeEnding("DATUM_FEATURE")) {
                continue;
            }
            for (const EntityNumber datum : _aspects.PartsOf(definition)) {
                const auto place = _places.find(datum);
                if (place != _places.end()) {
                    addOnce(owners, place->second);
                }
            }
        }
        return owners;
    }

    void AddCallout(PmiCallout& callout) {
        std::vector<std::size_t> owners = OwnersOf(callout);
        if (owners.empty()) {
            owners.push_back(AddPresentation(callout));
        }
        ReportDrawing(callout);
        for (const EntityNumber occurrence : callout.occurrences) {
            _presented[occurrence] = owners;
        }
        _presented[callout.number] = owners;
        for (const std::size_t owner : owners) {
            Present(callout, owner, owner == owners.front(),
                    _pmi.annotations[owners.front()].annotation.key);
        }
    }

    std::size_t AddPresentation(const PmiCallout& callout) {
        ExchangeAnnotation added;
        Annotation& annotation = added.annotation;
        annotation.key = keyOf(callout.number);
        annotation.typeCode = presentationTypeCode;
        for (const EntityNumber definition : callout.definitions) {
            if (const auto text = _notes.TextOf(definition)) {
                annotation.text = *text;
                annotation.kind = AnnotationKind::Note;
                annotation.type = "note";
                annotation.semantic = true;
            }
            Follow(definition, added.geometry, added.product, 1);
        }
        for (const std::string& name : callout.names) {
            if (annotation.type.empty()) {
                if (const auto named = kindOfPresentation(name)) {
                    annotation.kind = named->kind;
                    annotation.type = named->type;
                }
            }
        }
        if (annotation.type.empty()) {
            annotation.type = callout.names.empty() || callout.names.front().empty()
                                  ? "annotation"
                                  : callout.names.front();
        }
        annotation.attributes["SubType"] = annotation.type;
        _pmi.annotations.push_back(std::move(added));
        _records.emplace_back();
        return _pmi.annotations.size() - 1;
    }

    void ReportDrawing(const PmiCallout& callout) {
        for (const auto& [what, count] : callout.drawing.unread) {
            _pmi.findings.push_back(
                {Finding::Severity::Warning, "pmi.drawing-incomplete",
                 "Part of an annotation's drawing could not be read: " + what + ".",
                 keyOf(callout.number), count});
        }
        if (callout.drawing.IsEmpty()) {
            _pmi.findings.push_back({Finding::Severity::Warning, "pmi.no-drawing",
                                     "The drawing of an annotation could not be read.",
                                     keyOf(callout.number), 1});
        }
    }

    void Present(PmiCallout& callout, std::size_t owner, bool first, const std::string& firstKey) {
        ExchangeAnnotation& presented = _pmi.annotations[owner];
        Annotation& annotation = presented.annotation;
        // Hidden means that every one of its drawings is.
        annotation.hidden = (annotation.hidden || !annotation.drawnInFile) && callout.hidden;
        annotation.drawnInFile = true;
        if (annotation.name.empty()) {
            annotation.name = callout.name.empty() && !callout.names.empty() ? callout.names.front()
                                                                             : callout.name;
        }
        if (presented.geometry.empty()) {
            for (const EntityNumber definition : callout.definitions) {
                Follow(definition, presented.geometry, presented.product, 1);
            }
        }
        if (!presented.plane) {
            presented.plane = callout.plane;
        }
        if (!first) {
            annotation.attributes["DrawnWith"] = firstKey;
            return;
        }
        Append(callout.drawing, presented.drawing);
    }

    /// What has no drawing of its own is drawn with what it belongs to.
    void ShareDrawing(std::size_t place) {
        ExchangeAnnotation& sharing = _pmi.annotations[place];
        if (sharing.annotation.drawnInFile) {
            return;
        }
        for (const EntityNumber other : _records[place].drawnWith) {
            const auto found = _places.find(other);
            if (found == _places.end()) {
                continue;
            }
            const ExchangeAnnotation& drawn = _pmi.annotations[found->second];
            if (sharing.geometry.empty()) {
                sharing.geometry = drawn.geometry;
            }
            if (!drawn.annotation.drawnInFile) {
                continue;
            }
            std::string& keys = sharing.annotation.attributes["DrawnWith"];
            keys += (keys.empty() ? "" : ", ") + drawn.annotation.key;
            sharing.annotation.drawnInFile = true;
            sharing.annotation.hidden = drawn.annotation.hidden;
            for (auto& presented : _presented) {
                auto& owners = presented.second;
                if (std::find(owners.begin(), owners.end(), found->second) != owners.end()) {
                    addOnce(owners, place);
                }
            }
        }
    }

    static void Append(PmiDrawing& from, PmiDrawing& to) {
        const auto move = [](auto& source, auto& target) {
            target.insert(target.end(), std::make_move_iterator(source.begin()),
                          std::make_move_iterator(source.end()));
        };
        move(from.lines, to.lines);
        move(from.areas, to.areas);
        move(from.texts, to.texts);
        to.color = to.color ? to.color : from.color;
    }

    void FinishAnnotation(ExchangeAnnotation& finished) {
        Annotation& annotation = finished.annotation;
        annotation.color = finished.drawing.color;
        if (annotation.hidden) {
            annotation.attributes["Hidden"] = "true";
        }
        const std::size_t place = static_cast<std::size_t>(&finished - _pmi.annotations.data());
        std::string keys;
        for (const EntityNumber datum : _records[place].datums) {
            const auto found = _places.find(datum);
            const std::string key = found == _places.end()
                                        ? keyOf(datum)
                                        : _pmi.annotations[found->second].annotation.key;
            annotation.datums.push_back(key);
            keys += (keys.empty() ? "" : ", ") + key;
        }
        if (!keys.empty()) {
            annotation.attributes["DatumRefDatas"] = keys;
        }
    }

    void AddViews() {
        for (ExchangeView& read : readViews(_file, _millimetresPerUnit)) {
            if (!read.readable) {
                _pmi.findings.push_back({Finding::Severity::Warning, "view.unreadable",
                                         "A saved view has no readable camera and is left out.",
                                         read.view.key, 1});
                continue;
            }
            if (read.planeCount > 1) {
                _pmi.findings.push_back({Finding::Severity::Note, "view.clipping-reduced",
                                         "A saved view clips by several planes; one is kept.",
                                         read.view.key, read.planeCount - 1});
            }
            AddView(read);
        }
    }

    void AddView(ExchangeView& read) {
        ExchangePmiView added;
        added.view = std::move(read.view);
        std::set<EntityNumber> products;
        for (const std::size_t member : MembersOf(read.items)) {
            added.view.members.push_back(_pmi.annotations[member].annotation.key);
            products.insert(_pmi.annotations[member].product);
        }
        added.view.showsAll = added.view.members.empty();
        added.product = products.size() == 1 ? *products.begin() : 0;
        _pmi.views.push_back(std::move(added));
    }

    std::vector<std::size_t> MembersOf(const std::vector<EntityNumber>& items) const {
        std::vector<std::size_t> members;
        const auto add = [&](EntityNumber item) {
            const auto found = _presented.find(item);
            if (found != _presented.end()) {
                for (const std::size_t owner : found->second) {
                    addOnce(members, owner);
                }
            }
        };
        for (const EntityNumber item : items) {
            add(item);
            const ExchangeInstance plane = _file.Get(item);
            if (plane.Is("ANNOTATION_PLANE")) {
                for (const EntityNumber element :
                     plane.Attribute("ANNOTATION_PLANE", 0, 3).References()) {
                    add(element);
                }
            }
        }
        return members;
    }

    const ExchangeFile& _file;
    AspectLinks _aspects;
    NoteTexts _notes;
    double _millimetresPerUnit;
    ExchangePmi _pmi;
    struct Relations {
        std::vector<EntityNumber> datums;
        std::vector<EntityNumber> drawnWith;
    };
    std::vector<Relations> _records;                        ///< of each annotation
    std::unordered_map<EntityNumber, std::size_t> _places;  ///< of records among the annotations
    std::unordered_map<EntityNumber, std::vector<std::size_t>> _presented;  ///< by callout
};

}  // namespace

ExchangePmi readExchangePmi(const ExchangeFile& file, double millimetresPerUnit) {
    return PmiReader(file, millimetresPerUnit).Read();
}

}  // namespace kesview
