#include "commands/TreeCommand.h"

#include "commands/Console.h"
#include "commands/Errors.h"
#include "commands/Input.h"
#include "commands/Json.h"
#include "commands/Print.h"
#include "commands/SceneStructure.h"
#include "commands/Selectors.h"
#include "commands/Text.h"

#include <algorithm>
#include <utility>

namespace kesview {

namespace {

constexpr std::uint64_t kMostNodes = 500'000;

// --- from the document --------------------------------------------------------------------------

/// Puts nodes, which come parents first, below each other.
class TreeMaker {
public:
    explicit TreeMaker(const TreeOptions& options) : _options(options) {}

    NextStep Add(const SceneNode& node) {
        if (node.kind == SceneNode::Kind::Annotations) {
            return NextStep::Over;
        }
        if (++_count > kMostNodes) {
            throw LimitError("the tree has more than 500,000 nodes: ask for less by --depth.");
        }
        const bool isInstance = node.body == nullptr;
        const std::size_t level = node.components.size() + (isInstance ? 0 : 1) +
                                  (node.face != nullptr || node.edge != nullptr ? 1 : 0);
        TreeNode& added = place(level);
        fill(node, added);
        added.cut = isInstance && _options.depth &&
                    level >= static_cast<std::size_t>(*_options.depth) && hasMore(*node.product);
        const bool ends = added.cut || (node.kind == SceneNode::Kind::Body && !_options.faces);
        return ends ? NextStep::Over : NextStep::Into;
    }

    std::vector<TreeNode>& Roots() { return _roots; }

private:
    static bool hasMore(const Product& product) {
        return !product.components.empty() || !product.bodies.empty();
    }

    /// A new last child of the node open one level above; 1 is the level of the roots.
    TreeNode& place(std::size_t level) {
        _open.resize(level - 1);
        std::vector<TreeNode>& siblings = _open.empty() ? _roots : _open.back()->children;
        _open.push_back(&siblings.emplace_back());
        return *_open.back();
    }

    static void fill(const SceneNode& from, TreeNode& node) {
        node.name = lastName(from.path);
        node.kind = kindOf(from);
        node.path = from.path;
        node.renderId = renderIdText(from.renderId);
        node.entity = entityText(from.entity);
        if (from.body == nullptr) {
            node.product = from.product->name == node.name ? "" : from.product->name;
            node.hidden = from.components.back()->hidden;
        } else if (from.kind == SceneNode::Kind::Body) {
            node.hidden = from.body->hidden;
            node.faces = from.body->faces.size();
            node.edges = from.body->edges.size();
        }
    }

    const TreeOptions& _options;
    std::vector<TreeNode> _roots;
    std::vector<TreeNode*> _open;  // from a root to the node that was added last
    std::uint64_t _count = 0;
};

// --- text ---------------------------------------------------------------------------------------

struct Row {
    std::string name;  ///< indented
    std::string kind;
    std::string renderId;
    std::string rest;
};

std::string remarksOn(const TreeNode& node) {
    std::vector<std::string> remarks;
    if (node.faces != 0 || node.edges != 0) {
        remarks.push_back(countText(node.faces, "face", "faces") + ", " +
                          countText(node.edges, "edge", "edges"));
    }
    if (!node.product.empty()) {
        remarks.push_back("of " + plainText(node.product));
    }
    if (node.hidden) {
        remarks.emplace_back("hidden");
    }
    if (node.cut) {
        remarks.emplace_back("more below");
    }
    return remarks.empty() ? "" : "  (" + join(remarks, "; ") + ")";
}

void addRows(const TreeNode& node, std::size_t depth, std::vector<Row>& rows) {
    rows.push_back({std::string(2 * depth, ' ') + plainText(node.name), node.kind, node.renderId,
                    plainText(node.path) + remarksOn(node)});
    for (const TreeNode& child : node.children) {
        addRows(child, depth + 1, rows);
    }
}

std::size_t columnWidth(const std::vector<Row>& rows, std::string Row::*column, std::size_t most) {
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, textWidth(row.*column));
    }
    return std::min(width, most);
}

// --- JSON ---------------------------------------------------------------------------------------

Json toJson(const TreeNode& node) {
    Json json;
    json["name"] = node.name;
    json["kind"] = node.kind;
    json["path"] = node.path;
    json["renderId"] = node.renderId;
    json["entity"] = node.entity;
    json["product"] = jsonOrNull(node.product);
    json["hidden"] = node.hidden;
    json["faces"] = node.faces;
    json["edges"] = node.edges;
    json["cut"] = node.cut;
    json["children"] = Json::array();
    for (const TreeNode& child : node.children) {
        json["children"].push_back(toJson(child));
    }
    return json;
}

}  // namespace

TreeResult treeOf(const Document& document, const TreeOptions& options) {
    TreeMaker maker(options);
    forEachNode(document, [&maker](const SceneNode& node) { return maker.Add(node); });
    return {"", std::move(maker.Roots())};
}

std::string toText(const TreeResult& result) {
    std::vector<Row> rows;
    for (const TreeNode& root : result.roots) {
        addRows(root, 0, rows);
    }
    const std::size_t nameWidth = columnWidth(rows, &Row::name, 48);
    const std::size_t kindWidth = columnWidth(rows, &Row::kind, 12);
    const std::size_t idWidth = columnWidth(rows, &Row::renderId, 32);
    std::string text;
    for (const Row& row : rows) {
        text += padRight(row.name, nameWidth) + "  " + padRight(row.kind, kindWidth) + "  " +
                padRight(row.renderId, idWidth) + "  " + row.rest + "\n";
    }
    return text;
}

std::string toJson(const TreeResult& result) {
    Json json = startJson("tree");
    json["file"] = result.file;
    json["roots"] = Json::array();
    for (const TreeNode& root : result.roots) {
        json["roots"].push_back(toJson(root));
    }
    return jsonText(json);
}

ExitCode tree(const TreeOptions& options, const Tools& tools, Streams& streams) {
    Console console(streams, options);
    if (options.scene) {
        return printSceneStructure(options, tools, console, streams);
    }
    TreeResult result = treeOf(readDocument(options, Needs::Structure, tools, console), options);
    result.file = options.file;
    print(result, options.format, streams);
    return ExitCode::Done;
}

}  // namespace kesview
