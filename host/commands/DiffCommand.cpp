#include "commands/DiffCommand.h"

#include "commands/Console.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/SceneReport.h"
#include "commands/Session.h"
#include "commands/Text.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>

namespace kesview {

namespace {

/// By content: none of the CAD formats begins with '<'. What is no file, as a pipe that nobody
/// fills, is left to the reading of CAD files, which refuses it.
bool isReport(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    std::array<char, 64> start = {};
    file.read(start.data(), start.size());
    const std::string text(start.data(), static_cast<std::size_t>(file.gcount()));
    const std::size_t first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return first != std::string::npos && text[first] == '<';
}

std::unique_ptr<XmlReport> restored(const std::string& path) {
    auto report = std::make_unique<XmlReport>();
    if (!report->Restore(widen(path))) {
        throw ReadError(ReadFailure::Damaged, report->Problem());
    }
    const std::string root = report->Root().name();
    if (root != kReportRoot) {
        throw ReadError(ReadFailure::UnknownFormat, "'" + path +
                                                        "' is no report: it begins with <" + root +
                                                        ">, reports with <" + kReportRoot + ">.");
    }
    return report;
}

std::unique_ptr<XmlReport> reportOf(const std::string& path, const DiffOptions& options,
                                    const Tools& tools, Console& console) {
    if (isReport(path)) {
        return console.Timed("reading", [&] { return restored(path); });
    }
    CommonOptions reading = options;
    reading.file = path;
    Session session(readDocument(reading, Needs::Everything, tools, console), console);
    return console.Timed("report", [&] { return sceneReport(session); });
}

std::string nameOf(Difference::Kind kind) {
    switch (kind) {
        case Difference::Kind::Added:
            return "added";
        case Difference::Kind::Removed:
            return "removed";
        case Difference::Kind::Changed:
            return "changed";
        case Difference::Kind::Moved:
            break;
    }
    return "moved";
}

Json toJson(const Difference& difference) {
    Json json;
    json["kind"] = nameOf(difference.kind);
    json["path"] = difference.path;
    json["before"] = difference.before;
    json["after"] = difference.after;
    json["message"] = sentence(difference);
    return json;
}

}  // namespace

std::string toText(const DiffResult& result) {
    std::string text;
    for (const Difference& difference : result.differences) {
        text += plainText(sentence(difference)) + "\n";
    }
    return text.empty() ? "no differences\n" : text;
}

std::string toJson(const DiffResult& result) {
    Json json = startJson("diff");
    json["before"] = result.before;
    json["after"] = result.after;
    json["count"] = result.differences.size();
    json["differences"] = Json::array();
    for (const Difference& difference : result.differences) {
        json["differences"].push_back(toJson(difference));
    }
    return jsonText(json);
}

ExitCode diff(const DiffOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    const std::unique_ptr<XmlReport> before = reportOf(options.file, options, tools, console);
    const std::unique_ptr<XmlReport> after = reportOf(options.other, options, tools, console);
    DiffResult result;
    result.before = options.file;
    result.after = options.other;
    result.differences = console.Timed("comparing", [&] { return differences(*before, *after); });
    print(result, options.format, streams);
    return result.differences.empty() ? ExitCode::Done : ExitCode::Findings;
}

}  // namespace kesview
