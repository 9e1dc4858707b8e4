#include "commands/ReportCommand.h"

#include "commands/Console.h"
#include "commands/Errors.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/OutputFile.h"
#include "commands/Print.h"
#include "commands/SceneReport.h"
#include "commands/Session.h"
#include "commands/Text.h"

namespace kesview {

namespace {

void save(const XmlReport& report, const std::string& path) {
    writeOutput(path, [&] {
        if (!report.SaveTo(widen(path))) {
            throw OutputError(report.Problem());
        }
    });
}

}  // namespace

std::string toText(const ReportResult& result) {
    return result.output.empty()
               ? result.xml
               : plainText(result.output) + "  report of " + plainText(result.file) + "\n";
}

std::string toJson(const ReportResult& result) {
    Json json = startJson("report");
    json["file"] = result.file;
    json["output"] = jsonOrNull(result.output);
    json["xml"] = jsonOrNull(result.xml);
    return jsonText(json);
}

ExitCode report(const ReportOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    if (!options.output.empty()) {
        checkOutput(options.output, options.file);
    }
    Session session(readDocument(options, Needs::Everything, tools, console), console);
    const std::unique_ptr<XmlReport> made =
        console.Timed("report", [&] { return sceneReport(session); });
    ReportResult result;
    result.file = options.file;
    result.output = options.output;
    if (options.output.empty()) {
        result.xml = made->ToUtf8();
    } else {
        save(*made, options.output);
    }
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
