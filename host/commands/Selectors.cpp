#include "commands/Selectors.h"

#include "commands/Errors.h"
#include "commands/NearNames.h"
#include "commands/Text.h"
#include "loading/Ids.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace kesview {

namespace {

constexpr std::size_t kMostCandidates = 100'000;  // beyond that nobody waits for advice

bool bears(const SavedView& view, const std::string& selector) {
    return view.name == selector || view.key == selector || entityText(entityOf(view)) == selector;
}

std::set<std::string> namesIn(const SceneIndex& index) {
    std::set<std::string> names;
    index.ForEachNode([&](const SceneNode& node) {
        names.insert(lastName(node.path));
        return names.size() < kMostCandidates ? NextStep::Into : NextStep::Stop;
    });
    return names;
}

std::set<std::string> viewNames(const Document& document) {
    std::set<std::string> names;
    for (const SavedView& view : document.views) {
        names.insert(view.name);
    }
    return names;
}

[[noreturn]] void refuse(const SceneIndex& index, const std::string& selector) {
    std::set<std::string> names = namesIn(index);
    names.merge(viewNames(index.GetDocument()));
    const std::string advice = didYouMean(nearNames(lastName(selector), names));
    throw UsageError("nothing is named \"" + selector + "\"." +
                     (advice.empty() ? " \"kesview tree\" lists the names." : advice));
}

/// The annotations that the saved view of this name shows.
std::vector<SceneNode> membersNamed(const SceneIndex& index, const std::string& selector) {
    const SavedView* const view = findView(index.GetDocument(), selector);
    if (view == nullptr) {
        refuse(index, selector);
    }
    std::vector<SceneNode> members;
    for (const Annotation& annotation : index.GetDocument().annotations) {
        const bool member = view->showsAll || std::count(view->members.begin(), view->members.end(),
                                                         annotation.key) != 0;
        const std::vector<SceneNode> nodes =
            member ? index.FindAll(entityText(entityOf(annotation))) : std::vector<SceneNode>();
        members.insert(members.end(), nodes.begin(), nodes.end());
    }
    return members;
}

}  // namespace

const SavedView* findView(const Document& document, const std::string& selector) {
    const auto found = std::find_if(document.views.begin(), document.views.end(),
                                    [&](const SavedView& view) { return bears(view, selector); });
    return found == document.views.end() ? nullptr : &*found;
}

std::string noSuchView(const Document& document, const std::string& selector) {
    const std::string advice = didYouMean(nearNames(selector, viewNames(document)));
    return "no view is named \"" + selector + "\"." +
           (advice.empty() ? " \"kesview views\" lists those of the file." : advice);
}

Selection select(const SceneIndex& index, const std::string& selector) {
    Selection selection;
    selection.nodes = index.FindAll(selector);
    for (const SavedView& view : index.GetDocument().views) {
        if (bears(view, selector)) {
            selection.views.push_back(&view);
        }
    }
    if (selection.nodes.empty() && selection.views.empty()) {
        refuse(index, selector);
    }
    return selection;
}

std::vector<SceneNode> selectNodes(const SceneIndex& index,
                                   const std::vector<std::string>& selectors) {
    std::vector<SceneNode> nodes;
    for (const std::string& selector : selectors) {
        std::vector<SceneNode> found = index.FindAll(selector);
        if (found.empty()) {
            found = membersNamed(index, selector);
        }
        std::move(found.begin(), found.end(), std::back_inserter(nodes));
    }
    return nodes;
}

std::string kindOf(const SceneNode& node) {
    switch (node.kind) {
        case SceneNode::Kind::Assembly:
            return "assembly";
        case SceneNode::Kind::Part:
            return "part";
        case SceneNode::Kind::Bodies:
            return "bodies";
        case SceneNode::Kind::Body:
            return nameOf(node.body->kind);
        case SceneNode::Kind::Elements:
            return "elements";
        case SceneNode::Kind::Face:
            return "face";
        case SceneNode::Kind::Edge:
            return "edge";
        case SceneNode::Kind::Annotations:
            return "annotations";
        case SceneNode::Kind::Group:
            return "group";
        case SceneNode::Kind::Annotation:
            break;
    }
    return "annotation";
}

std::string lastName(const std::string& path) {
    std::string name;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '/') {
            name.clear();
            continue;
        }
        at += path[at] == '\\' && at + 1 < path.size() ? 1U : 0U;
        name += path[at];
    }
    return name;
}

}  // namespace kesview
