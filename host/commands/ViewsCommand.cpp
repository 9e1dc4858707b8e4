#include "commands/ViewsCommand.h"

#include "commands/AnnotationNames.h"
#include "commands/Console.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/Text.h"

namespace kesview {

namespace {

std::string cameraText(const SavedView& view) {
    const std::string kind = view.perspective
                                 ? "perspective, " + lengthText(view.viewAngle) + " degrees high"
                                 : "orthographic";
    return kind + "\n    eye       " + vectorText(view.eye) + "\n    target    " +
           vectorText(view.target) + "\n    up        " + vectorText(view.up);
}

std::string windowText(const SavedView& view) {
    return view.width > 0 && view.height > 0
               ? lengthText(view.width) + " x " + lengthText(view.height) + " mm"
               : "unknown";
}

std::string membersText(const ViewFacts& facts) {
    std::string text = facts.view.showsAll ? "all " : "";
    text += std::to_string(facts.members.size());
    for (const ViewMember& member : facts.members) {
        text += "\n              " + plainText(member.key) +
                (member.name.empty() ? "" : "  " + plainText(member.name));
    }
    return text;
}

std::string viewText(const ViewFacts& facts) {
    const SavedView& view = facts.view;
    std::string text = (view.name.empty() ? "(unnamed)" : plainText(view.name)) +
                       "  (view:" + std::to_string(view.id) + ", " + plainText(view.key) + ")\n";
    text += "    camera    " + cameraText(view) + "\n";
    text += "    window    " + windowText(view) + "\n";
    if (view.clipping) {
        text += "    clipping  through " + vectorText(view.clipping->point) + ", keeps towards " +
                vectorText(view.clipping->normal) + "\n";
    }
    return text + "    members   " + membersText(facts) + "\n";
}

Json cameraJson(const SavedView& view) {
    Json json;
    json["projection"] = view.perspective ? "perspective" : "orthographic";
    json["eye"] = jsonVector(view.eye);
    json["target"] = jsonVector(view.target);
    json["up"] = jsonVector(view.up);
    json["viewAngle"] = view.perspective ? jsonNumber(view.viewAngle) : Json(nullptr);
    return json;
}

Json windowJson(const SavedView& view) {
    if (!(view.width > 0 && view.height > 0)) {
        return nullptr;
    }
    return Json{{"width", jsonNumber(view.width)}, {"height", jsonNumber(view.height)}};
}

Json clippingJson(const SavedView& view) {
    if (!view.clipping) {
        return nullptr;
    }
    return Json{{"point", jsonVector(view.clipping->point)},
                {"normal", jsonVector(view.clipping->normal)}};
}

Json toJson(const ViewFacts& facts) {
    Json json;
    json["name"] = facts.view.name;
    json["key"] = facts.view.key;
    json["entity"] = "view:" + std::to_string(facts.view.id);
    json["camera"] = cameraJson(facts.view);
    json["window"] = windowJson(facts.view);
    json["clipping"] = clippingJson(facts.view);
    json["showsAll"] = facts.view.showsAll;
    json["members"] = Json::array();
    for (const ViewMember& member : facts.members) {
        json["members"].push_back(Json{{"key", member.key}, {"name", jsonOrNull(member.name)}});
    }
    return json;
}

}  // namespace

ViewsResult viewsOf(const Document& document) {
    const AnnotationNames names(document);
    ViewsResult result;
    for (const SavedView& view : document.views) {
        ViewFacts facts;
        facts.view = view;
        for (const std::string& key : view.members) {
            facts.members.push_back({key, names.Of(key)});
        }
        if (view.showsAll) {
            facts.members.clear();
            for (const Annotation& annotation : document.annotations) {
                facts.members.push_back({annotation.key, names.Of(annotation.key)});
            }
        }
        result.views.push_back(std::move(facts));
    }
    return result;
}

std::string toText(const ViewsResult& result) {
    std::string text;
    for (const ViewFacts& facts : result.views) {
        text += viewText(facts);
    }
    return text.empty() ? "no saved views\n" : text;
}

std::string toJson(const ViewsResult& result) {
    Json json = startJson("views");
    json["file"] = result.file;
    json["views"] = Json::array();
    for (const ViewFacts& facts : result.views) {
        json["views"].push_back(toJson(facts));
    }
    return jsonText(json);
}

ExitCode views(const ViewsOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    ViewsResult result = viewsOf(readDocument(options, Needs::Pmi, tools, console));
    result.file = options.file;
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
