#include "commands/SceneStructure.h"

#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/Session.h"
#include "commands/Text.h"

#include <sstream>

namespace kesview {

std::string toText(const SceneStructure& result) {
    std::istringstream lines(result.lines);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += plainText(line) + "\n";
    }
    return text;
}

std::string toJson(const SceneStructure& result) {
    Json json = startJson("tree");
    json["file"] = result.file;
    json["scene"] = Json::array();
    std::istringstream lines(result.lines);
    for (std::string line; std::getline(lines, line);) {
        json["scene"].push_back(line);
    }
    return jsonText(json);
}

ExitCode printSceneStructure(const TreeOptions& options, const Tools& tools, Console& console,
                             Streams& streams) {
    Session session(readDocument(options, Needs::Everything, tools, console), console);
    SceneStructure result;
    result.file = options.file;
    session.Adapter().GetSceneStructure(result.lines, false);
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
