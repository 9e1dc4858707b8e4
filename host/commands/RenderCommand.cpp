#include "commands/RenderCommand.h"

#include "commands/Console.h"
#include "commands/Errors.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/OutputFile.h"
#include "commands/Print.h"
#include "commands/ReadableColors.h"
#include "commands/SceneSetup.h"
#include "commands/Session.h"
#include "commands/Text.h"
#include "drawing/Drawing.h"

#include <exception>

namespace kesview {

namespace {

std::uint64_t trianglesOf(const Picture& picture) {
    std::uint64_t indices = 0;
    for (const TriangleBatch& batch : picture.triangles) {
        indices += batch.triangles.size();
    }
    for (const TriangleBatch& batch : picture.annotationTriangles) {
        indices += batch.triangles.size();
    }
    return indices / 3;
}

std::uint64_t shownAnnotations(Session& session) {
    std::uint64_t count = 0;
    session.Index().ForEachNode([&](const SceneNode& node) {
        const bool shown =
            node.kind == SceneNode::Kind::Annotation && session.Adapter().IsVisible(node.renderId);
        count += shown ? 1U : 0U;
        const bool model = node.kind != SceneNode::Kind::Annotations;
        return model ? NextStep::Over : NextStep::Into;
    });
    return count;
}

void save(const Image& image, const std::string& path) {
    try {
        writeOutput(path, [&] { writePng(image, path); });
    } catch (const std::exception& error) {
        throw OutputError(error.what());
    }
}

}  // namespace

std::string toText(const RenderResult& result) {
    return plainText(result.output) + "  " + std::to_string(result.width) + " x " +
           std::to_string(result.height) + "  view " + plainText(result.view) + ", " +
           countText(result.triangles, "triangle", "triangles") + ", " +
           countText(result.annotations, "annotation", "annotations") + "\n";
}

std::string toJson(const RenderResult& result) {
    Json json = startJson("render");
    json["file"] = result.file;
    json["output"] = result.output;
    json["view"] = result.view;
    json["width"] = result.width;
    json["height"] = result.height;
    json["triangles"] = result.triangles;
    json["annotations"] = result.annotations;
    return jsonText(json);
}

ExitCode render(const RenderOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    const Background background = parseBackground(options.background);
    checkScene(options.scene);
    checkOutput(options.output, options.file);
    Session session(readDocument(options, Needs::Everything, tools, console), console);
    RenderResult result;
    result.view = setUpScene(options.scene, session);
    session.View().SetBackground(background.bottom, background.top);
    Picture picture = console.Timed("picture", [&] { return session.View().MakePicture(); });
    if (const std::size_t changed = makeAnnotationsReadable(picture)) {
        console.Note("annotations in the colour of the background are drawn in another: " +
                     countText(changed, "group", "groups") + ".");
    }
    const Image image = console.Timed("drawing", [&] {
        console.Progress("drawing", 0);
        return tools.makeDrawing()->Draw(picture);
    });
    console.Timed("writing", [&] { save(image, options.output); });
    result.file = options.file;
    result.output = options.output;
    result.width = image.width;
    result.height = image.height;
    result.triangles = trianglesOf(picture);
    result.annotations = shownAnnotations(session);
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
