#include "commands/Findings.h"

#include "commands/Text.h"

#include <algorithm>

namespace kesview {

namespace {

std::string coloredSeverity(Finding::Severity severity, bool colored) {
    const std::string word = padRight(nameOf(severity), 7);
    if (!colored) {
        return word;
    }
    switch (severity) {
        case Finding::Severity::Error:
            return "\033[31m" + word + "\033[0m";
        case Finding::Severity::Warning:
            return "\033[33m" + word + "\033[0m";
        case Finding::Severity::Note:
            break;
    }
    return "\033[2m" + word + "\033[0m";
}

}  // namespace

std::vector<Finding> worstFirst(std::vector<Finding> findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
    return findings;
}

std::uint64_t countOf(const std::vector<Finding>& findings, Finding::Severity severity) {
    return static_cast<std::uint64_t>(
        std::count_if(findings.begin(), findings.end(),
                      [severity](const Finding& finding) { return finding.severity == severity; }));
}

std::string findingsSummary(const std::vector<Finding>& findings) {
    std::vector<std::string> parts;
    for (const Finding::Severity severity :
         {Finding::Severity::Error, Finding::Severity::Warning, Finding::Severity::Note}) {
        if (const std::uint64_t count = countOf(findings, severity)) {
            parts.push_back(countText(count, nameOf(severity), nameOf(severity) + "s"));
        }
    }
    return parts.empty() ? "none" : join(parts, ", ");
}

std::string findingLine(const Finding& finding, bool colored) {
    const std::string line = coloredSeverity(finding.severity, colored) + "  " +
                             padRight(plainText(finding.code), 24) + "  " +
                             plainText(finding.message);
    const std::string details = detailsOf(finding);
    return details.empty() ? line : line + " (" + plainText(details) + ")";
}

std::string detailsOf(const Finding& finding) {
    const std::string times =
        finding.count > 1 ? std::to_string(finding.count) + " times" : std::string();
    return finding.where + (finding.where.empty() || times.empty() ? "" : ", ") + times;
}

Json toJson(const Finding& finding) {
    Json json;
    json["severity"] = nameOf(finding.severity);
    json["code"] = finding.code;
    json["message"] = finding.message;
    json["where"] = jsonOrNull(finding.where);
    json["count"] = finding.count;
    return json;
}

}  // namespace kesview
