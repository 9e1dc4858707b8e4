#pragma once

/// @file
/// The whole scene as a report.

#include "commands/Session.h"
#include "reports/XmlReport.h"

#include <memory>

namespace kesview {

/// The name of every report's outermost element.
constexpr const char* kReportRoot = "Scene";

/// Defined, made by the library's active report factory. Throws std::runtime_error where the scene
/// gives none.
std::unique_ptr<XmlReport> sceneReport(Session& session);

}  // namespace kesview
