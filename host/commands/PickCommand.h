#pragma once

/// @file
/// kesview pick: what is seen at a pixel.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <optional>
#include <string>
#include <vector>

namespace kesview {

struct PickedAnnotation {
    std::string key;
    std::string entity;  ///< "annotation:9"
    std::string displayName;
};

struct Picked {
    std::string renderId;
    std::string entity;   ///< "face:12"
    std::string type;     ///< "face", "edge", "points", "annotation"
    std::string path;     ///< of names: "Gearbox/Bolt/Body/face 12"
    std::string body;     ///< "body:5" of a face or an edge; empty otherwise
    std::string element;  ///< of the library's model: "Face", "Edge", "PMI"; empty where unknown
    std::string visualId;
    Vector point = {0, 0, 0};                   ///< millimetres, in the world
    double distance = 0;                        ///< along the line of sight, in millimetres
    std::vector<PickedAnnotation> annotations;  ///< that speak of it
};

struct PickResult {
    std::string file;
    std::string view;
    int x = 0;
    int y = 0;
    std::optional<Picked> hit;
};

std::string toText(const PickResult& result);
std::string toJson(const PickResult& result);

/// A pixel where nothing is seen is no failure.
ExitCode pick(const PickOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
