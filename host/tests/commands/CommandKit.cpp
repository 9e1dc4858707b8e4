#include "CommandKit.h"

#include "JsonSchema.h"
#include "commands/CommandLine.h"
#include "picking/PickIndex.h"
#include "support/DocumentKit.h"
#include "support/Golden.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace kesview::support {

namespace {

/// As a reader answers that was asked for no triangles.
void dropPoints(Document& document) {
    for (Product& product : document.products) {
        for (Body& body : product.bodies) {
            body.points.clear();
            for (Face& face : body.faces) {
                face.points.clear();
                face.normals.clear();
                face.triangles.clear();
            }
            for (Edge& edge : body.edges) {
                edge.points.clear();
            }
        }
    }
}

}  // namespace

Tools toolsReading(Document document) {
    Tools tools;
    tools.read = [document](const std::string&, const ReadOptions& options,
                            const ReadProgress& progress) {
        progress("reading", 0.25);
        Document answer = document;
        if (!options.withTessellation) {
            dropPoints(answer);
        }
        if (!options.withPmi) {
            answer.annotations.clear();
            answer.views.clear();
        }
        return answer;
    };
    tools.makeDrawing = []() -> std::unique_ptr<Drawing> {
        throw DrawError("There is nothing to draw with: install it.");
    };
    tools.makePicker = makePickIndex;
    return tools;
}

Answer run(const std::vector<std::string>& arguments, const Tools& tools, Terminal terminal) {
    std::ostringstream out;
    std::ostringstream err;
    Streams streams{out, err, terminal.shows, terminal.colors, terminal.colors};
    Answer answer;
    answer.code = runKesview(arguments, tools, streams);
    answer.out = out.str();
    answer.err = err.str();
    return answer;
}

Answer run(const std::vector<std::string>& arguments, Document document) {
    return run(arguments, toolsReading(std::move(document)));
}

Document annotatedMachine() {
    Document document = machine();
    addAnnotations(document);
    document.views = {frontView()};
    document.schema = "AP242 edition 1";
    document.unit = "inch";
    document.millimetresPerUnit = 25.4;
    document.products[0].layers = {"Fasteners"};
    document.findings = {
        {Finding::Severity::Note, "pmi.placed", "A text was placed by its plane.", "#610", 1},
        {Finding::Severity::Warning, "pmi.no-drawing", "A drawing could not be read.", "#620", 2}};
    return document;
}

std::string golden(const std::string& name, const std::string& actual) {
    return goldenText(std::string(KESVIEW_GOLDEN) + "/" + name, actual);
}

std::string violations(const std::string& verb, const std::string& json) {
    std::ifstream file(std::string(KESVIEW_SCHEMAS) + "/" + verb + ".schema.json");
    const nlohmann::json schema = nlohmann::json::parse(file);
    return checkJson(nlohmann::json::parse(json), schema);
}

}  // namespace kesview::support
