#pragma once

/// @file
/// kesview views: the cameras that the file saved.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

struct ViewMember {
    std::string key;
    std::string name;  ///< as people know the annotation; empty where the file has no such one
};

struct ViewFacts {
    SavedView view;
    std::vector<ViewMember> members;  ///< every annotation, where the view shows all
};

struct ViewsResult {
    std::string file;
    std::vector<ViewFacts> views;
};

ViewsResult viewsOf(const Document& document);

std::string toText(const ViewsResult& result);
std::string toJson(const ViewsResult& result);

ExitCode views(const ViewsOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
