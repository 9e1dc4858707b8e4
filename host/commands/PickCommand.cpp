#include "commands/PickCommand.h"

#include "commands/AnnotationLinks.h"
#include "commands/Console.h"
#include "commands/Errors.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/SceneSetup.h"
#include "commands/Selectors.h"
#include "commands/Session.h"
#include "commands/Text.h"

#include <KesVizCore/model/VizElement.h>

namespace kesview {

namespace {

/// The node that was hit, or the nearest above that has a name: texts of annotations have none.
std::optional<SceneNode> namedNode(const SceneIndex& index, viz::RenderId path) {
    while (path.Length() > 1) {
        std::optional<SceneNode> node = index.Find(path);
        if (node && node->kind != SceneNode::Kind::Elements &&
            node->kind != SceneNode::Kind::Group && node->kind != SceneNode::Kind::Bodies) {
            return node;
        }
        path.SetLength(path.Length() - 1);
    }
    return std::nullopt;
}

std::vector<PickedAnnotation> annotationsOn(const SceneNode& node, Session& session) {
    if (node.annotation != nullptr) {
        return {};
    }
    Selection selection;
    selection.nodes.push_back(node);
    std::vector<PickedAnnotation> annotations;
    for (const Annotation* annotation : annotationsOf(session.Index(), selection)) {
        std::wstring name;
        session.Model().pmi.GetDisplayName(widen(annotation->key), name);
        annotations.push_back(
            {annotation->key, "annotation:" + std::to_string(annotation->id), narrow(name)});
    }
    return annotations;
}

void fillElement(Session& session, const viz::EntityId& entity, Picked& picked) {
    const auto element = session.Model().elements.find(entity);
    if (element != session.Model().elements.end() && element->second != nullptr) {
        picked.element = element->second->GetElementType();
        picked.visualId = narrow(element->second->GetVisualID());
    }
}

Picked picked(const PickHit& hit, Session& session) {
    const std::optional<SceneNode> node = namedNode(session.Index(), hit.path);
    if (!node) {
        throw std::runtime_error("what was hit is not in the document.");
    }
    Picked picked;
    picked.renderId = renderIdText(node->renderId);
    picked.entity = entityText(node->entity);
    picked.type = kindOf(*node);
    picked.path = node->path;
    if (node->body != nullptr && node->kind != SceneNode::Kind::Body) {
        picked.body = "body:" + std::to_string(node->body->id);
    }
    picked.point = hit.point;
    picked.distance = hit.distance;
    picked.annotations = annotationsOn(*node, session);
    fillElement(session, node->entity, picked);
    return picked;
}

void requirePixel(const PickOptions& options) {
    const SceneOptions& scene = options.scene;
    if (options.x < 0 || options.y < 0 || options.x >= scene.width || options.y >= scene.height) {
        throw UsageError("the pixel " + std::to_string(options.x) + "," +
                         std::to_string(options.y) + " is outside of the picture of " +
                         std::to_string(scene.width) + "x" + std::to_string(scene.height) + ".");
    }
}

std::string annotationsText(const std::vector<PickedAnnotation>& annotations) {
    std::string text;
    for (const PickedAnnotation& annotation : annotations) {
        text += "pmi        " + plainText(annotation.key) + "  " +
                plainText(annotation.displayName) + "\n";
    }
    return text;
}

Json toJson(const Picked& picked) {
    Json json;
    json["renderId"] = picked.renderId;
    json["entity"] = picked.entity;
    json["type"] = picked.type;
    json["path"] = picked.path;
    json["body"] = jsonOrNull(picked.body);
    json["element"] = jsonOrNull(picked.element);
    json["visualId"] = jsonOrNull(picked.visualId);
    json["point"] = jsonVector(picked.point);
    json["distance"] = jsonNumber(picked.distance);
    json["annotations"] = Json::array();
    for (const PickedAnnotation& annotation : picked.annotations) {
        json["annotations"].push_back(Json{{"key", annotation.key},
                                           {"entity", annotation.entity},
                                           {"displayName", annotation.displayName}});
    }
    return json;
}

}  // namespace

std::string toText(const PickResult& result) {
    if (!result.hit) {
        return "nothing\n";
    }
    const Picked& hit = *result.hit;
    std::string text = "render id  " + hit.renderId + "\n";
    text += "entity     " + hit.entity + (hit.body.empty() ? "" : " of " + hit.body) + "\n";
    text += "type       " + hit.type + "\n";
    if (!hit.element.empty()) {
        text += "element    " + hit.element + " \"" + plainText(hit.visualId) + "\"\n";
    }
    text += "path       " + plainText(hit.path) + "\n";
    text += "point      " + vectorText(hit.point) + " mm\n";
    return text + annotationsText(hit.annotations);
}

std::string toJson(const PickResult& result) {
    Json json = startJson("pick");
    json["file"] = result.file;
    json["view"] = result.view;
    json["pixel"] = Json::array({result.x, result.y});
    json["hit"] = result.hit.has_value();
    json["what"] = result.hit ? toJson(*result.hit) : Json(nullptr);
    return jsonText(json);
}

ExitCode pick(const PickOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    requirePixel(options);
    checkScene(options.scene);
    Session session(readDocument(options, Needs::Everything, tools, console), console,
                    tools.makePicker);
    PickResult result;
    result.view = setUpScene(options.scene, session);
    const std::optional<PickHit> hit =
        console.Timed("picking", [&] { return session.View().Pick(options.x, options.y); });
    if (hit) {
        result.hit = picked(*hit, session);
    }
    result.file = options.file;
    result.x = options.x;
    result.y = options.y;
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
