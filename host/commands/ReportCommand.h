#pragma once

/// @file
/// kesview report: the scene as XML, for keeping and comparing.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <string>

namespace kesview {

struct ReportResult {
    std::string file;
    std::string output;  ///< empty where the report itself is the data
    std::string xml;     ///< empty where it went into a file
};

/// The report, or a line that says where it went.
std::string toText(const ReportResult& result);
std::string toJson(const ReportResult& result);

/// Writes the file whole or not at all.
ExitCode report(const ReportOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
