#pragma once

/// @file
/// What the command line asks for, one struct for each verb.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kesview {

enum class OutputFormat { Text, Json };

/// Of every verb.
struct CommonOptions {
    std::string file;
    OutputFormat format = OutputFormat::Text;
    bool quiet = false;    ///< errors alone on the error stream
    bool verbose = false;  ///< also what reading noted
    bool time = false;
    std::chrono::milliseconds timeLimit{600'000};
    std::uint64_t memoryLimit = 12ULL << 30;  ///< bytes
};

struct InfoOptions : CommonOptions {};

struct TreeOptions : CommonOptions {
    std::optional<int> depth;  ///< levels that are shown, 1 or more
    bool faces = false;
    bool scene = false;
};

struct PmiOptions : CommonOptions {
    bool semantic = false;
    std::string of;  ///< a selector; empty for all annotations
};

struct ViewsOptions : CommonOptions {};

struct CheckOptions : CommonOptions {};

enum class ShownPmi { All, None, View };

/// What is seen, of render and pick alike.
struct SceneOptions {
    std::string view;  ///< name of a saved view or of a side; empty for iso
    int width = 1600;  ///< pixels
    int height = 1000;
    std::optional<ShownPmi> pmi;  ///< none: those of the view, or all without a saved view
    bool edges = true;
    std::vector<std::string> hide;  ///< selectors, as are the next two
    std::vector<std::string> isolate;
    std::vector<std::string> highlight;
    std::string section;  ///< "x=10", "nx,ny,nz,d", "view" or "none"; empty: the view's own
};

struct RenderOptions : CommonOptions {
    SceneOptions scene;
    std::string output;
    std::string background = "white";
};

struct PickOptions : CommonOptions {
    SceneOptions scene;
    int x = 0;
    int y = 0;
};

struct ReportOptions : CommonOptions {
    std::string output;  ///< empty for the data stream
};

struct DiffOptions : CommonOptions {
    std::string other;
};

}  // namespace kesview
