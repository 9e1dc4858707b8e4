#include "commands/InfoCommand.h"

#include "commands/Console.h"
#include "commands/Findings.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Placement.h"
#include "commands/Print.h"
#include "commands/Text.h"
#include "view/Vectors.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace kesview {

namespace {

// --- counting -----------------------------------------------------------------------------------

void count(const Body& body, ShapeCounts& counts) {
    switch (body.kind) {
        case BodyKind::Solid:
            ++counts.solids;
            break;
        case BodyKind::Sheet:
            ++counts.sheets;
            break;
        case BodyKind::Wire:
            ++counts.wires;
            break;
        case BodyKind::Points:
            ++counts.pointSets;
            break;
        case BodyKind::Mesh:
            ++counts.meshes;
            break;
    }
    counts.faces += body.faces.size();
    counts.edges += body.edges.size();
    for (const Face& face : body.faces) {
        counts.triangles += face.triangles.size() / 3;
    }
}

ShapeCounts countsOf(const Product& product) {
    ShapeCounts counts;
    for (const Body& body : product.bodies) {
        count(body, counts);
    }
    return counts;
}

void add(ShapeCounts& sum, const ShapeCounts& more) {
    sum.solids += more.solids;
    sum.sheets += more.sheets;
    sum.wires += more.wires;
    sum.pointSets += more.pointSets;
    sum.meshes += more.meshes;
    sum.faces += more.faces;
    sum.edges += more.edges;
    sum.triangles += more.triangles;
}

// --- the box ------------------------------------------------------------------------------------

void addPoints(const std::vector<float>& points, const Matrix& world, const Vector& origin,
               Box& box) {
    for (std::size_t at = 0; at + 2 < points.size(); at += 3) {
        const Vector point =
            transformPoint(world, origin + Vector{points[at], points[at + 1], points[at + 2]});
        if (std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2])) {
            box.Add(point);
        }
    }
}

void addBody(const Body& body, const Matrix& world, Box& box) {
    for (const Face& face : body.faces) {
        addPoints(face.points, world, body.origin, box);
    }
    for (const Edge& edge : body.edges) {
        addPoints(edge.points, world, body.origin, box);
    }
    addPoints(body.points, world, body.origin, box);
}

void fillPlaced(const Document& document, InfoResult& result) {
    std::vector<ShapeCounts> counts;
    for (const Product& product : document.products) {
        counts.push_back(countsOf(product));
        add(result.unique, counts.back());
    }
    forEachPlaced(document, [&](const Placed& here) {
        ++result.instances;
        result.leaves += here.product->components.empty() ? 1U : 0U;
        result.levels = std::max<std::uint64_t>(result.levels, here.level);
        add(result.expanded, counts[here.productIndex]);
        for (const Body& body : here.product->bodies) {
            addBody(body, here.worldFromProduct, result.box);
        }
    });
}

// --- colours and layers -------------------------------------------------------------------------

class Uses {
public:
    void Add(const std::optional<Color>& color) {
        if (color) {
            ++_colors[*color];
        }
    }
    void Add(const std::vector<std::string>& layers) {
        for (const std::string& layer : layers) {
            ++_layers[layer];
        }
    }
    void Add(const std::vector<Component>& components) {
        for (const Component& component : components) {
            Add(component.color);
            Add(component.layers);
        }
    }
    void Add(const Body& body) {
        Add(body.color);
        Add(body.layers);
        for (const Face& face : body.faces) {
            Add(face.color);
        }
        for (const Edge& edge : body.edges) {
            Add(edge.color);
        }
    }

    std::vector<ColorUse> Colors() const {
        std::vector<ColorUse> colors;
        for (const auto& [color, uses] : _colors) {
            colors.push_back({color, uses});
        }
        std::stable_sort(colors.begin(), colors.end(),
                         [](const ColorUse& a, const ColorUse& b) { return a.uses > b.uses; });
        return colors;
    }
    std::vector<LayerUse> Layers() const {
        std::vector<LayerUse> layers;
        for (const auto& [name, uses] : _layers) {
            layers.push_back({name, uses});
        }
        return layers;
    }

private:
    std::map<Color, std::uint64_t> _colors;
    std::map<std::string, std::uint64_t> _layers;
};

void fillUses(const Document& document, InfoResult& result) {
    Uses uses;
    uses.Add(document.roots);
    for (const Product& product : document.products) {
        uses.Add(product.color);
        uses.Add(product.layers);
        uses.Add(product.components);
        for (const Body& body : product.bodies) {
            uses.Add(body);
        }
    }
    result.colors = uses.Colors();
    result.layers = uses.Layers();
}

void fillAnnotations(const Document& document, InfoResult& result) {
    result.annotationCount = document.annotations.size();
    for (const Annotation& annotation : document.annotations) {
        ++result.annotations[annotation.kind];
        const bool drawn = !annotation.lines.empty() || !annotation.areas.empty();
        result.semanticAnnotations += annotation.semantic ? 1U : 0U;
        result.drawnAnnotations += drawn ? 1U : 0U;
        const bool shared = annotation.attributes.count("DrawnWith") != 0;
        result.undrawnAnnotations += annotation.drawnInFile && !drawn && !shared ? 1U : 0U;
    }
    result.views = document.views.size();
    for (const SavedView& view : document.views) {
        result.clippedViews += view.clipping ? 1U : 0U;
    }
}

// --- text ---------------------------------------------------------------------------------------

constexpr std::size_t kLabelWidth = 11;

void addLine(std::string& text, const std::string& label, const std::string& value) {
    if (!value.empty()) {
        text += padRight(label, kLabelWidth) + value + "\n";
    }
}

std::string unitText(const InfoResult& result) {
    if (result.unit.empty()) {
        return "unknown";
    }
    const bool scaled = result.millimetresPerUnit != 1;
    return plainText(result.unit) +
           (scaled ? " (" + lengthText(result.millimetresPerUnit) + " mm)" : "");
}

/// What is smaller than @p step is nothing.
Vector withoutDust(Vector vector, double step) {
    for (double& value : vector) {
        value = std::abs(value) <= step ? 0 : value;
    }
    return vector;
}

std::string boxText(const InfoResult& result) {
    if (result.box.IsEmpty()) {
        return "nothing has points";
    }
    const double step = 1e-12 * lengthOf(result.box.high - result.box.low);  // of rounding
    const Vector low = withoutDust(result.box.low, step);
    const Vector high = withoutDust(result.box.high, step);
    return lengthText(high[0] - low[0]) + " x " + lengthText(high[1] - low[1]) + " x " +
           lengthText(high[2] - low[2]) + " mm, from " + vectorText(low) + " to " +
           vectorText(high);
}

std::string assemblyText(const InfoResult& result) {
    return countText(result.products, "product", "products") + ", " +
           countText(result.instances, "instance", "instances") + " (" +
           countText(result.leaves, "leaf", "leaves") + "), " +
           countText(result.levels, "level", "levels");
}

std::string shapesText(const InfoResult& result) {
    struct Row {
        const char* name;
        std::uint64_t unique;
        std::uint64_t expanded;
    };
    const ShapeCounts& once = result.unique;
    const ShapeCounts& all = result.expanded;
    const Row rows[] = {
        {"solids", once.solids, all.solids}, {"sheets", once.sheets, all.sheets},
        {"wires", once.wires, all.wires},    {"point sets", once.pointSets, all.pointSets},
        {"meshes", once.meshes, all.meshes}, {"faces", once.faces, all.faces},
        {"edges", once.edges, all.edges},    {"triangles", once.triangles, all.triangles}};
    std::string text = padRight("shapes", kLabelWidth) + "           described   as placed\n";
    for (const Row& row : rows) {
        if (row.unique != 0 || row.expanded != 0) {
            text += padRight("", kLabelWidth) + padRight(row.name, 10) +
                    padLeft(std::to_string(row.unique), 10) +
                    padLeft(std::to_string(row.expanded), 12) + "\n";
        }
    }
    return text;
}

std::string colorsText(const InfoResult& result) {
    std::vector<std::string> parts;
    for (const ColorUse& use : result.colors) {
        parts.push_back(colorText(use.color) + " (" + std::to_string(use.uses) + ")");
    }
    return parts.empty() ? "none" : join(parts, ", ");
}

std::string layersText(const InfoResult& result) {
    std::vector<std::string> parts;
    for (const LayerUse& use : result.layers) {
        parts.push_back(plainText(use.name) + " (" + std::to_string(use.uses) + ")");
    }
    return join(parts, ", ");
}

std::string pmiText(const InfoResult& result) {
    if (result.annotationCount == 0) {
        return "none";
    }
    std::vector<std::string> kinds;
    for (const auto& [kind, number] : result.annotations) {
        const bool hisses = kind == AnnotationKind::SurfaceFinish;
        kinds.push_back(countText(number, nameOf(kind), nameOf(kind) + (hisses ? "es" : "s")));
    }
    std::string text = countText(result.annotationCount, "annotation", "annotations") + ": " +
                       join(kinds, ", ") + "; " + std::to_string(result.semanticAnnotations) +
                       " semantic, " + std::to_string(result.drawnAnnotations) + " drawn";
    return result.undrawnAnnotations == 0
               ? text
               : text + ", " + std::to_string(result.undrawnAnnotations) + " drawings lost";
}

std::string viewsText(const InfoResult& result) {
    if (result.views == 0) {
        return "none";
    }
    return std::to_string(result.views) +
           (result.clippedViews == 0
                ? ""
                : ", " + std::to_string(result.clippedViews) + " with a clipping plane");
}

// --- JSON ---------------------------------------------------------------------------------------

Json toJson(const ShapeCounts& counts) {
    Json json;
    json["solids"] = counts.solids;
    json["sheets"] = counts.sheets;
    json["wires"] = counts.wires;
    json["pointSets"] = counts.pointSets;
    json["meshes"] = counts.meshes;
    json["faces"] = counts.faces;
    json["edges"] = counts.edges;
    json["triangles"] = counts.triangles;
    return json;
}

Json boxJson(const Box& box) {
    if (box.IsEmpty()) {
        return nullptr;
    }
    Json json;
    json["low"] = jsonVector(box.low);
    json["high"] = jsonVector(box.high);
    return json;
}

Json assemblyJson(const InfoResult& result) {
    Json json;
    json["products"] = result.products;
    json["instances"] = result.instances;
    json["leaves"] = result.leaves;
    json["levels"] = result.levels;
    return json;
}

Json colorsJson(const std::vector<ColorUse>& colors) {
    Json json = Json::array();
    for (const ColorUse& use : colors) {
        json.push_back(Json{{"color", colorText(use.color)}, {"uses", use.uses}});
    }
    return json;
}

Json layersJson(const std::vector<LayerUse>& layers) {
    Json json = Json::array();
    for (const LayerUse& use : layers) {
        json.push_back(Json{{"name", use.name}, {"uses", use.uses}});
    }
    return json;
}

Json pmiJson(const InfoResult& result) {
    Json kinds = Json::object();
    for (const auto& [kind, number] : result.annotations) {
        kinds[nameOf(kind)] = number;
    }
    Json json;
    json["annotations"] = result.annotationCount;
    json["byKind"] = kinds;
    json["semantic"] = result.semanticAnnotations;
    json["drawn"] = result.drawnAnnotations;
    json["drawingsLost"] = result.undrawnAnnotations;
    return json;
}

}  // namespace

InfoResult infoOf(const Document& document) {
    InfoResult result;
    result.format = document.format;
    result.schema = document.schema;
    result.unit = document.unit;
    result.millimetresPerUnit = document.millimetresPerUnit;
    result.author = document.author;
    result.originatingSystem = document.originatingSystem;
    result.timeStamp = document.timeStamp;
    result.products = document.products.size();
    result.findings = worstFirst(document.findings);
    fillPlaced(document, result);
    fillUses(document, result);
    fillAnnotations(document, result);
    return result;
}

std::string toText(const InfoResult& result) {
    std::string text;
    addLine(text, "file", plainText(result.file));
    addLine(text, "format",
            plainText(result.format + (result.schema.empty() ? "" : ", " + result.schema)));
    addLine(text, "unit", unitText(result));
    addLine(text, "author", plainText(result.author));
    addLine(text, "system", plainText(result.originatingSystem));
    addLine(text, "written", plainText(result.timeStamp));
    addLine(text, "box", boxText(result));
    addLine(text, "assembly", assemblyText(result));
    text += shapesText(result);
    addLine(text, "colours", colorsText(result));
    addLine(text, "layers", layersText(result));
    addLine(text, "PMI", pmiText(result));
    addLine(text, "views", viewsText(result));
    addLine(text, "findings", findingsSummary(result.findings));
    for (const Finding& finding : result.findings) {
        text += "  " + findingLine(finding, false) + "\n";
    }
    return text;
}

std::string toJson(const InfoResult& result) {
    Json json = startJson("info");
    json["file"] = result.file;
    json["format"] = result.format;
    json["schema"] = jsonOrNull(result.schema);
    json["unit"] = jsonOrNull(result.unit);
    json["millimetresPerUnit"] = jsonNumber(result.millimetresPerUnit);
    json["author"] = jsonOrNull(result.author);
    json["originatingSystem"] = jsonOrNull(result.originatingSystem);
    json["timeStamp"] = jsonOrNull(result.timeStamp);
    json["box"] = boxJson(result.box);
    json["assembly"] = assemblyJson(result);
    json["described"] = toJson(result.unique);
    json["placed"] = toJson(result.expanded);
    json["colors"] = colorsJson(result.colors);
    json["layers"] = layersJson(result.layers);
    json["pmi"] = pmiJson(result);
    json["views"] = Json{{"count", result.views}, {"clipped", result.clippedViews}};
    json["findings"] = Json::array();
    for (const Finding& finding : result.findings) {
        json["findings"].push_back(toJson(finding));
    }
    return jsonText(json);
}

ExitCode info(const InfoOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    InfoResult result = infoOf(readQuietly(options, Needs::Everything, tools, console));
    result.file = options.file;
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
