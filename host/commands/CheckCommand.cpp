#include "commands/CheckCommand.h"

#include "commands/Console.h"
#include "commands/Findings.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/Text.h"

namespace kesview {

namespace {

Json countsJson(const std::vector<Finding>& findings) {
    Json json;
    json["errors"] = countOf(findings, Finding::Severity::Error);
    json["warnings"] = countOf(findings, Finding::Severity::Warning);
    json["notes"] = countOf(findings, Finding::Severity::Note);
    return json;
}

bool isWorthAStop(const Finding& finding) {
    return finding.severity != Finding::Severity::Note;
}

}  // namespace

std::string toText(const CheckResult& result) {
    std::string text;
    for (const Finding& finding : result.findings) {
        text += findingLine(finding, result.colored) + "\n";
    }
    return text + plainText(result.file) + ": " +
           (result.findings.empty() ? "nothing found" : findingsSummary(result.findings)) + "\n";
}

std::string toJson(const CheckResult& result) {
    Json json = startJson("check");
    json["file"] = result.file;
    json["counts"] = countsJson(result.findings);
    json["findings"] = Json::array();
    for (const Finding& finding : result.findings) {
        json["findings"].push_back(toJson(finding));
    }
    return jsonText(json);
}

ExitCode check(const CheckOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    CheckResult result;
    result.findings = worstFirst(readQuietly(options, Needs::Everything, tools, console).findings);
    result.file = options.file;
    result.colored = streams.colorsOut;
    print(result, options.format, streams);
    const bool stops = !result.findings.empty() && isWorthAStop(result.findings.front());
    return stops ? ExitCode::Findings : ExitCode::Done;
}

}  // namespace kesview
