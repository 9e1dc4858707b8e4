/// @file
/// See ReadPmi.h.

#include "reading/occ/ReadPmi.h"

#include "reading/occ/Findings.h"
#include "reading/occ/PmiFaults.h"
#include "reading/occ/PmiShapes.h"
#include "reading/occ/PmiTextPlace.h"
#include "reading/occ/PmiViewCheck.h"
#include "reading/occ/XcafNotes.h"
#include "reading/part21/ExchangePmi.h"

#include <STEPCAFControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Iterator.hxx>
#include <algorithm>
#include <map>
#include <set>

namespace kesview {
namespace {

Placement placementOf(const Matrix& m) {
    return {{m[12], m[13], m[14]}, {m[0], m[1], m[2]}, {m[4], m[5], m[6]}, {m[8], m[9], m[10]}};
}

void appendPoint(const Vector& point, std::vector<float>& points) {
    for (const double coordinate : point) {
        points.push_back(static_cast<float>(coordinate));
    }
}

class PmiAssembler {
public:
    PmiAssembler(const ExchangeFile& file, const PmiShapes& pmiShapes, const PmiBox& model,
                 const ShapeLookup& lookup, Document& document)
        : _file(file),
          _shapes(pmiShapes),
          _lookup(lookup),
          _document(document),
          _scene(model),
          _texts(model) {}

    void Add(ExchangePmi& pmi) {
        for (const Finding& finding : pmi.findings) {
            addFinding(_document, {finding.severity, finding.code, finding.message, finding.where},
                       finding.count);
        }
        for (ExchangeAnnotation& annotation : pmi.annotations) {
            AddAnnotation(annotation);
        }
        for (ExchangePmiView& view : pmi.views) {
            AddView(view);
        }
        TellUnresolved();
    }

private:
    void AddAnnotation(ExchangeAnnotation& read) {
        Annotation annotation = std::move(read.annotation);
        annotation.id = _lookup.nextId();
        const Placement world = WorldOf(read.product);
        PmiBox target;
        for (const EntityNumber item : read.geometry) {
            Link(item, world, annotation, target);
        }
        Draw(read.drawing, world, annotation);
        if (read.plane) {
            const Placement plane = nested(world, *read.plane);
            annotation.plane = {plane.origin, plane.x, plane.y};
        }
        if (!annotation.drawnInFile && !annotation.text.empty()) {
            _texts.Place(target, annotation);
            addFinding(_document, {Finding::Severity::Note, "pmi.text-only",
                                   "The file says what an annotation means and not how it looks; "
                                   "its text stands beside what it applies to.",
                                   annotation.key});
        }
        _document.annotations.push_back(std::move(annotation));
    }

    void Link(EntityNumber item, const Placement& world, Annotation& annotation, PmiBox& target) {
        const TopoDS_Shape shape = _shapes.Find(item);
        if (shape.IsNull() || !LinkShape(shape, annotation, 0)) {
            const ExchangeInstance unresolved = _file.Get(item);
            Unresolved& entry =
                _unresolved[unresolved.parts.empty() ? "an entity that is not there"
                                                     : unresolved.parts.front().type];
            entry.first = entry.first.empty() ? annotation.key : entry.first;
            ++entry.count;
            return;
        }
        const PmiBox box = boxOf(shape);
        for (int corner = 0; !box.IsEmpty() && corner < 8; ++corner) {
            target.Add(world.Point({corner & 1 ? box.high[0] : box.low[0],
                                    corner & 2 ? box.high[1] : box.low[1],
                                    corner & 4 ? box.high[2] : box.low[2]}));
        }
    }

    /// A product that is no entity itself stands for what it is put together from.
    bool LinkShape(const TopoDS_Shape& shape, Annotation& annotation, int depth) {
        const auto link = _lookup.link(shape);
        if (link) {
            AddOnce(*link, annotation.links);
            return true;
        }
        bool linked = false;
        if (shape.ShapeType() == TopAbs_COMPOUND && depth < 3) {
            for (TopoDS_Iterator part(shape); part.More(); part.Next()) {
                linked = LinkShape(part.Value(), annotation, depth + 1) || linked;
            }
        }
        return linked;
    }

    static void AddOnce(const EntityLink& link, std::vector<EntityLink>& links) {
        const bool known = std::any_of(links.begin(), links.end(), [&](const EntityLink& other) {
            return other.kind == link.kind && other.owner == link.owner && other.id == link.id;
        });
        if (!known) {
            links.push_back(link);
        }
    }

    void Draw(const PmiDrawing& drawing, const Placement& world, Annotation& annotation) {
        const auto place = [&](const Vector& point, std::vector<float>& points) {
            const Vector placed = world.Point(point);
            _scene.Add(placed);
            appendPoint(placed, points);
        };
        for (const auto& line : drawing.lines) {
            std::vector<float>& points = annotation.lines.emplace_back();
            for (const Vector& point : line) {
                place(point, points);
            }
        }
        for (const PmiDrawing::Area& area : drawing.areas) {
            FilledArea& filled = annotation.areas.emplace_back();
            filled.triangles = area.triangles;
            for (const Vector& point : area.points) {
                place(point, filled.points);
            }
        }
        for (PlacedText text : drawing.texts) {
            text.position = world.Point(text.position);
            text.u = world.Direction(text.u);
            text.v = world.Direction(text.v);
            annotation.texts.push_back(std::move(text));
        }
    }

    void AddView(ExchangePmiView& read) {
        SavedView view = std::move(read.view);
        view.id = _lookup.nextId();
        const Placement world = WorldOf(read.product);
        view.eye = world.Point(view.eye);
        view.target = world.Point(view.target);
        view.up = world.Direction(view.up);
        if (view.clipping) {
            view.clipping->point = world.Point(view.clipping->point);
            view.clipping->normal = world.Direction(view.clipping->normal);
        }
        aimAtScene(_scene, view, _document);
        _document.views.push_back(std::move(view));
    }

    Placement WorldOf(EntityNumber product) {
        const auto known = _worlds.find(product);
        if (known != _worlds.end()) {
            return known->second;
        }
        const std::string entry = product == 0 ? "" : _shapes.EntryOf(product);
        const Placement world =
            entry.empty() ? Placement() : placementOf(_lookup.worldFromProduct(entry));
        _worlds.emplace(product, world);
        return world;
    }

    void TellUnresolved() {
        for (const auto& [type, entry] : _unresolved) {
            addFinding(_document,
                       {Finding::Severity::Note, "pmi.link-unresolved",
                        "An annotation applies to " + type + " that is no part of the model read.",
                        entry.first},
                       entry.count);
        }
    }

    struct Unresolved {
        std::string first;
        std::uint64_t count = 0;
    };

    const ExchangeFile& _file;
    const PmiShapes& _shapes;
    const ShapeLookup& _lookup;
    Document& _document;
    PmiBox _scene;  ///< the model and what is drawn around it, in the world
    PmiTextPlaces _texts;
    std::map<std::string, Unresolved> _unresolved;
    std::map<EntityNumber, Placement> _worlds;
};

void readPmiUnguarded(const Handle(TDocStd_Document) & source, STEPCAFControl_Reader& reader,
                      const std::string& path, const ShapeLookup& shapes, Document& document) {
    const auto file = ExchangeFile::Open(path);
    if (!file) {
        addFinding(document,
                   {Finding::Severity::Error, "pmi.unread",
                    "Annotations and views are left out: the file cannot be read again.", ""});
        return;
    }
    ExchangePmi pmi = readExchangePmi(*file, document.millimetresPerUnit);
    const PmiShapes pmiShapes(reader);
    PmiAssembler(*file, pmiShapes, boxOfDocument(source), shapes, document).Add(pmi);
    readXcafNotes(source, shapes, document);
    tellPmiFaults(reader, *file, document);
}

}  // namespace

void readPmi(const Handle(TDocStd_Document) & source, STEPCAFControl_Reader& reader,
             const std::string& path, const ShapeLookup& shapes, Document& document) {
    try {
        readPmiUnguarded(source, reader, path, shapes, document);
    } catch (const Standard_Failure& failure) {
        addFinding(document, {Finding::Severity::Error, "pmi.failed",
                              "Annotations or views are left out: reading them failed.",
                              failure.GetMessageString()});
    }
}

}  // namespace kesview
