#include "commands/PmiCommand.h"

#include "commands/AnnotationLinks.h"
#include "commands/Console.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/Selectors.h"
#include "commands/Text.h"
#include "loading/Load.h"

#include <algorithm>
#include <sstream>

namespace kesview {

namespace {

constexpr Id kRoot = 1;

// --- from the document --------------------------------------------------------------------------

LinkedEntity linkedEntity(const SceneIndex& index, const EntityLink& link) {
    LinkedEntity linked;
    linked.entity = nameOf(link.kind) + ":" + std::to_string(link.id);
    linked.body = link.owner == 0 ? "" : "body:" + std::to_string(link.owner);
    for (const SceneNode& place : placesOf(index, link)) {
        linked.name = lastName(place.path);
        linked.renderIds.push_back(renderIdText(place.renderId));
    }
    return linked;
}

std::vector<std::string> viewsOf(const Document& document, const Annotation& annotation) {
    std::vector<std::string> views;
    for (const SavedView& view : document.views) {
        const bool member = std::find(view.members.begin(), view.members.end(), annotation.key) !=
                            view.members.end();
        if (view.showsAll || member) {
            views.push_back(view.name.empty() ? view.key : view.name);
        }
    }
    return views;
}

viz::RenderId renderIdOf(const SceneIndex& index, const Annotation& annotation) {
    const auto type = static_cast<Id>(entityTypeOf(annotation.kind));
    return {{kRoot, index.AnnotationContainer(), type, annotation.id}, viz::View3D};
}

/// All but what only the loaded model knows.
AnnotationFacts factsOf(const SceneIndex& index, const Annotation& annotation) {
    AnnotationFacts facts;
    facts.key = annotation.key;
    facts.entity = "annotation:" + std::to_string(annotation.id);
    facts.kind = nameOf(annotation.kind);
    facts.type = annotation.type;
    facts.text = annotation.text;
    facts.attributes = annotation.attributes;
    facts.isSemantic = annotation.semantic;
    facts.lines = annotation.lines.size();
    facts.areas = annotation.areas.size();
    facts.texts = annotation.texts.size();
    facts.drawnInFile = annotation.drawnInFile;
    facts.hidden = annotation.hidden;
    facts.renderId = renderIdText(renderIdOf(index, annotation));
    for (const EntityLink& link : annotation.links) {
        facts.links.push_back(linkedEntity(index, link));
    }
    facts.datums = annotation.datums;
    facts.views = viewsOf(index.GetDocument(), annotation);
    return facts;
}

std::vector<const Annotation*> wanted(const SceneIndex& index, const std::string& of) {
    if (!of.empty()) {
        return annotationsOf(index, select(index, of));
    }
    std::vector<const Annotation*> all;
    for (const Annotation& annotation : index.GetDocument().annotations) {
        all.push_back(&annotation);
    }
    return all;
}

void addWhatTheModelSays(const viz::VizPMIContainer& model, bool semantic, AnnotationFacts& facts) {
    const std::wstring key = widen(facts.key);
    std::wstring text;
    if (model.GetDisplayName(key, text)) {
        facts.displayName = narrow(text);
    }
    if (semantic && model.GetSemanticPMIAsString(key, text)) {
        facts.semantic = narrow(text);
    }
}

// --- text ---------------------------------------------------------------------------------------

void addLine(std::string& text, const std::string& label, const std::string& value) {
    if (!value.empty()) {
        text += "    " + padRight(label, 8) + value + "\n";
    }
}

std::string attributesText(const AnnotationFacts& facts) {
    std::vector<std::string> parts;
    for (const auto& [key, value] : facts.attributes) {
        parts.push_back(plainText(key) + " = " + plainText(value));
    }
    return join(parts, "; ");
}

std::string linkText(const LinkedEntity& link) {
    std::string text = link.entity;
    if (!link.name.empty()) {
        text += " \"" + plainText(link.name) + "\"";
    }
    if (!link.body.empty()) {
        text += " of " + link.body;
    }
    if (!link.renderIds.empty()) {
        text += ", " + link.renderIds.front();
    }
    if (link.renderIds.size() > 1) {
        text += " and " + countText(link.renderIds.size() - 1, "other place", "other places");
    }
    return text;
}

std::string linksText(const AnnotationFacts& facts) {
    std::vector<std::string> parts;
    for (const LinkedEntity& link : facts.links) {
        parts.push_back(linkText(link));
    }
    return join(parts, "\n            ");
}

std::string drawingText(const AnnotationFacts& facts) {
    std::vector<std::string> parts;
    if (facts.lines != 0) {
        parts.push_back(countText(facts.lines, "line", "lines"));
    }
    if (facts.areas != 0) {
        parts.push_back(countText(facts.areas, "area", "areas"));
    }
    if (facts.texts != 0) {
        parts.push_back(countText(facts.texts, "text", "texts"));
    }
    const auto shared = facts.attributes.find("DrawnWith");
    if (shared != facts.attributes.end()) {
        parts.push_back("with " + plainText(shared->second));
    } else if (parts.empty()) {
        parts.emplace_back(facts.drawnInFile ? "lost in reading" : "none in the file");
    }
    if (facts.hidden) {
        parts.emplace_back("hidden");
    }
    return join(parts, ", ");
}

std::string plainList(std::vector<std::string> texts) {
    std::transform(texts.begin(), texts.end(), texts.begin(), plainText);
    return join(texts, ", ");
}

std::string indentedLines(const std::string& text) {
    std::istringstream lines(text);
    std::string indented;
    for (std::string line; std::getline(lines, line);) {
        indented += line.empty() ? "\n" : "        " + plainText(line) + "\n";
    }
    return indented;
}

std::string annotationText(const AnnotationFacts& facts) {
    const std::string kind = facts.type.empty() || facts.type == facts.kind
                                 ? facts.kind
                                 : facts.kind + ", " + facts.type;
    std::string text = plainText(facts.key) + "  " + plainText(facts.displayName) + "  (" +
                       plainText(kind) + "; " + facts.entity + ")\n";
    addLine(text, "text", plainText(facts.text));
    addLine(text, "values", attributesText(facts));
    addLine(text, "of", linksText(facts));
    addLine(text, "datums", plainList(facts.datums));
    addLine(text, "views", plainList(facts.views));
    addLine(text, "drawing", drawingText(facts));
    return facts.semantic.empty() ? text : text + indentedLines(facts.semantic);
}

// --- JSON ---------------------------------------------------------------------------------------

Json toJson(const LinkedEntity& link) {
    Json json;
    json["entity"] = link.entity;
    json["name"] = jsonOrNull(link.name);
    json["body"] = jsonOrNull(link.body);
    json["renderIds"] = link.renderIds;
    return json;
}

Json drawingJson(const AnnotationFacts& facts) {
    Json json;
    json["inFile"] = facts.drawnInFile;
    json["lines"] = facts.lines;
    json["areas"] = facts.areas;
    json["texts"] = facts.texts;
    return json;
}

Json toJson(const AnnotationFacts& facts) {
    Json json;
    json["key"] = facts.key;
    json["entity"] = facts.entity;
    json["renderId"] = facts.renderId;
    json["kind"] = facts.kind;
    json["type"] = jsonOrNull(facts.type);
    json["displayName"] = facts.displayName;
    json["text"] = jsonOrNull(facts.text);
    json["attributes"] = Json::object();
    for (const auto& [key, value] : facts.attributes) {
        json["attributes"][key] = value;
    }
    json["isSemantic"] = facts.isSemantic;
    json["semantic"] = jsonOrNull(facts.semantic);
    json["hidden"] = facts.hidden;
    json["drawing"] = drawingJson(facts);
    json["links"] = Json::array();
    for (const LinkedEntity& link : facts.links) {
        json["links"].push_back(toJson(link));
    }
    json["datums"] = facts.datums;
    json["views"] = facts.views;
    return json;
}

}  // namespace

PmiResult pmiOf(Document& document, const PmiOptions& options) {
    PmiResult result;
    const SceneIndex index(document);
    for (const Annotation* annotation : wanted(index, options.of)) {
        result.annotations.push_back(factsOf(index, *annotation));
    }
    const std::unique_ptr<LoadedModel> model = load(document);
    for (AnnotationFacts& facts : result.annotations) {
        addWhatTheModelSays(model->pmi, options.semantic, facts);
    }
    return result;
}

std::string toText(const PmiResult& result) {
    std::string text;
    for (const AnnotationFacts& facts : result.annotations) {
        text += annotationText(facts);
    }
    return text.empty() ? "no annotations\n" : text;
}

std::string toJson(const PmiResult& result) {
    Json json = startJson("pmi");
    json["file"] = result.file;
    json["annotations"] = Json::array();
    for (const AnnotationFacts& facts : result.annotations) {
        json["annotations"].push_back(toJson(facts));
    }
    return jsonText(json);
}

ExitCode pmi(const PmiOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    Document document = readDocument(options, Needs::Pmi, tools, console);
    PmiResult result = console.Timed("annotations", [&] { return pmiOf(document, options); });
    result.file = options.file;
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
