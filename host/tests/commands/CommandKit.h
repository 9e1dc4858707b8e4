#pragma once

/// @file
/// Runs kesview in the test's process, over a document of the test.

#include "commands/ExitCode.h"
#include "commands/Tools.h"

#include <string>
#include <vector>

namespace kesview::support {

struct Answer {
    ExitCode code = ExitCode::Done;
    std::string out;
    std::string err;
};

/// Tools whose reader answers @p document for every path, and cannot draw.
Tools toolsReading(Document document);

struct Terminal {
    bool shows = false;
    bool colors = false;
};

Answer run(const std::vector<std::string>& arguments, const Tools& tools, Terminal terminal = {});
/// Over a document.
Answer run(const std::vector<std::string>& arguments, Document document);

/// The machine of DocumentKit, with its annotations, the view, a colour, a layer and findings.
Document annotatedMachine();

/// The text of golden/@p name: see goldenText.
std::string golden(const std::string& name, const std::string& actual);

/// Everything that is wrong with @p json by the schema file of @p verb; empty when nothing is.
std::string violations(const std::string& verb, const std::string& json);

}  // namespace kesview::support
