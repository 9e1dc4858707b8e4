#include "commands/Input.h"

#include "commands/Findings.h"

#include <string>

namespace kesview {

namespace {

ReadOptions readOptions(const CommonOptions& options, Needs needs) {
    ReadOptions reading;
    reading.withPmi = needs != Needs::Structure;
    reading.withTessellation = needs == Needs::Everything;
    reading.timeLimit = options.timeLimit;
    reading.memoryLimit = options.memoryLimit;
    return reading;
}

void say(const Finding& finding, Console& console) {
    const std::string details = detailsOf(finding);
    const std::string message =
        details.empty() ? finding.message : finding.message + " (" + details + ")";
    if (finding.severity == Finding::Severity::Note) {
        console.Note(message);
    } else {
        console.Warn(message);  // errors of the file are no errors of this run
    }
}

}  // namespace

Document readQuietly(const CommonOptions& options, Needs needs, const Tools& tools,
                     Console& console) {
    return console.Timed("reading", [&] {
        return tools.read(options.file, readOptions(options, needs),
                          [&console](const std::string& stage, double fraction) {
                              console.Progress(stage, fraction);
                          });
    });
}

Document readDocument(const CommonOptions& options, Needs needs, const Tools& tools,
                      Console& console) {
    Document document = readQuietly(options, needs, tools, console);
    for (const Finding& finding : document.findings) {
        say(finding, console);
    }
    return document;
}

}  // namespace kesview
