#pragma once

/// @file
/// kesview pmi: each annotation, what it says, what it speaks of and where it is seen.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kesview {

struct LinkedEntity {
    std::string entity;  ///< "face:12"
    std::string name;    ///< may be empty
    std::string body;    ///< "body:5" of a face or an edge; empty otherwise
    /// Where the scene holds it, once for each use of its product; empty for a vertex.
    std::vector<std::string> renderIds;
};

struct AnnotationFacts {
    std::string key;
    std::string entity;  ///< "annotation:9"
    std::string kind;
    std::string type;
    std::string displayName;
    std::string text;
    std::map<std::string, std::string> attributes;
    bool isSemantic = false;
    std::uint64_t lines = 0;  ///< of its drawing, as are the next two
    std::uint64_t areas = 0;
    std::uint64_t texts = 0;
    bool drawnInFile = false;
    bool hidden = false;
    std::string renderId;
    std::vector<LinkedEntity> links;
    std::vector<std::string> datums;  ///< keys
    std::vector<std::string> views;   ///< names, or keys of views without one
    std::string semantic;             ///< the semantic record in lines; empty unless asked for
};

struct PmiResult {
    std::string file;
    std::vector<AnnotationFacts> annotations;
};

/// Moves the points out of @p document. Throws UsageError where options.of names nothing.
PmiResult pmiOf(Document& document, const PmiOptions& options);

std::string toText(const PmiResult& result);
std::string toJson(const PmiResult& result);

ExitCode pmi(const PmiOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
