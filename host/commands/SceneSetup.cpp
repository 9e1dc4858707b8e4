#include "commands/SceneSetup.h"

#include "commands/Errors.h"
#include "commands/Selectors.h"
#include "loading/Ids.h"
#include "view/Cameras.h"
#include "view/ViewState.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <vector>

namespace kesview {

namespace {

constexpr Color kHighlight = {255, 128, 0, 255};

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts(1);
    for (const char letter : text) {
        if (letter == separator) {
            parts.emplace_back();
        } else {
            parts.back() += letter;
        }
    }
    return parts;
}

std::optional<double> numberIn(const std::string& text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool whole = !text.empty() && error == std::errc() && stop == end;
    return whole && std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

[[noreturn]] void refuseSection(const std::string& text) {
    throw UsageError("\"" + text + "\" is no plane: write x=10, y=-5, z=0 or nx,ny,nz,d.");
}

// --- what is shown ------------------------------------------------------------------------------

std::vector<viz::RenderId> pathsOf(const SceneIndex& index,
                                   const std::vector<std::string>& selectors) {
    std::vector<viz::RenderId> paths;
    for (const SceneNode& node : selectNodes(index, selectors)) {
        paths.push_back(node.renderId);
    }
    return paths;
}

viz::RenderId annotationsPath(const SceneIndex& index) {
    viz::RenderId path = sceneRoot();
    path.AddValue(index.AnnotationContainer());
    return path;
}

viz::RenderId pathOf(const SceneIndex& index, const Annotation& annotation) {
    viz::RenderId path = annotationsPath(index);
    path.AddValue(static_cast<Id>(entityTypeOf(annotation.kind)));
    path.AddValue(annotation.id);
    return path;
}

/// Members are shown even where the file hides them, the others are not.
void showMembers(const SceneIndex& index, const SavedView& view, ViewState& state) {
    const std::set<std::string> members(view.members.begin(), view.members.end());
    for (const Annotation& annotation : index.GetDocument().annotations) {
        const bool member = view.showsAll || members.count(annotation.key) != 0;
        (member ? state.shown : state.hidden).push_back(pathOf(index, annotation));
    }
}

void showAnnotations(const SceneOptions& options, const SavedView* view, const SceneIndex& index,
                     ViewState& state) {
    const ShownPmi shown = options.pmi.value_or(view == nullptr ? ShownPmi::All : ShownPmi::View);
    if (shown == ShownPmi::View && view == nullptr) {
        throw UsageError("--pmi view needs a saved view: name it by --view.");
    }
    state.annotations = shown != ShownPmi::None;
    if (shown == ShownPmi::View) {
        showMembers(index, *view, state);
    }
    if (!options.isolate.empty() && options.pmi && state.annotations) {
        state.isolated.push_back(annotationsPath(index));
    }
}

void showParts(const SceneOptions& options, const SceneIndex& index, ViewState& state) {
    state.edges = options.edges;
    state.isolated = pathsOf(index, options.isolate);
    const std::vector<viz::RenderId> hidden = pathsOf(index, options.hide);
    state.hidden.insert(state.hidden.end(), hidden.begin(), hidden.end());
    for (const viz::RenderId& path : pathsOf(index, options.highlight)) {
        state.highlighted.emplace_back(path, kHighlight);
    }
}

// --- camera -------------------------------------------------------------------------------------

/// Saved views before those that every file has. Null for one of these.
const SavedView* savedView(const SceneOptions& options, const Document& document) {
    const SavedView* const view = options.view.empty() ? nullptr : findView(document, options.view);
    const std::vector<std::string>& standard = standardViewNames();
    const bool known = options.view.empty() || view != nullptr ||
                       std::find(standard.begin(), standard.end(), options.view) != standard.end();
    if (!known) {
        throw UsageError(noSuchView(document, options.view));
    }
    return view;
}

void look(const SceneOptions& options, const SavedView* view, Session& session) {
    if (view == nullptr) {
        session.View().SetStandardView(options.view.empty() ? "iso" : options.view);
        return;
    }
    const auto at = static_cast<std::size_t>(view - session.GetDocument().views.data());
    if (!session.View().SetCapture(*session.Model().pmi.GetCaptures().at(at))) {
        throw UsageError("the view \"" + options.view +
                         "\" has no camera that looks anywhere: choose another.");
    }
}

void cut(const SceneOptions& options, Session& session) {
    if (options.section.empty()) {
        return;  // the view's own, which came with its camera
    }
    std::optional<SavedView::Plane> plane;
    if (options.section != "none") {
        plane = parseSection(options.section);
    }
    session.Adapter().SetClipping(plane, false);
}

std::optional<Color> colorIn(const std::string& text) {
    if (text == "white") {
        return Color{255, 255, 255, 255};
    }
    if (text == "black") {
        return Color{0, 0, 0, 255};
    }
    if (text == "grey" || text == "gray") {
        return Color{128, 128, 128, 255};
    }
    std::uint32_t number = 0;
    const bool hex = text.size() == 7 && text.front() == '#';
    const char* const end = text.data() + text.size();
    if (!hex || std::from_chars(text.data() + 1, end, number, 16).ptr != end) {
        return std::nullopt;
    }
    const auto byte = [number](unsigned shift) {
        return static_cast<std::uint8_t>((number >> shift) & 0xFFU);
    };
    return Color{byte(16), byte(8), byte(0), 255};
}

}  // namespace

void checkScene(const SceneOptions& options) {
    if (!options.section.empty() && options.section != "none") {
        parseSection(options.section);
    }
    if (options.pmi == ShownPmi::View && options.view.empty()) {
        throw UsageError("--pmi view needs a saved view: name it by --view.");
    }
}

std::string setUpScene(const SceneOptions& options, Session& session) {
    const SavedView* const view = savedView(options, session.GetDocument());
    ViewState state = stateOf(session.View());
    state.width = options.width;
    state.height = options.height;
    state.samples = ViewState().samples;  // a scene's own options start with one
    showParts(options, session.Index(), state);
    showAnnotations(options, view, session.Index(), state);
    apply(state, session.View());
    look(options, view, session);
    cut(options, session);
    return options.view.empty() ? "iso" : view == nullptr ? options.view : view->name;
}

SavedView::Plane parseSection(const std::string& text) {
    SavedView::Plane plane;
    if (text.size() > 2 && text[1] == '=' && text[0] >= 'x' && text[0] <= 'z') {
        const auto axis = static_cast<std::size_t>(text[0] - 'x');
        const std::optional<double> at = numberIn(text.substr(2));
        if (!at) {
            refuseSection(text);
        }
        plane.normal = {0, 0, 0};
        plane.point[axis] = *at;
        plane.normal[axis] = -1;
        return plane;
    }
    Vector normal = {0, 0, 0};
    double offset = 0;
    const std::vector<std::string> parts = split(text, ',');
    for (std::size_t i = 0; i < parts.size() && i < 4; ++i) {
        const std::optional<double> number = numberIn(parts[i]);
        if (!number) {
            refuseSection(text);
        }
        (i < 3 ? normal[i] : offset) = *number;
    }
    const double length = lengthOf(normal);
    if (parts.size() != 4 || !(length > 0) || !std::isfinite(length)) {
        refuseSection(text);
    }
    plane.normal = (-1 / length) * normal;
    plane.point = (-offset / length) * plane.normal;
    return plane;
}

Background parseBackground(const std::string& text) {
    const std::vector<std::string> parts = split(text, ',');
    const std::optional<Color> bottom = colorIn(parts.front());
    const std::optional<Color> top = parts.size() == 2 ? colorIn(parts.back()) : std::nullopt;
    if (!bottom || parts.size() > 2 || (parts.size() == 2 && !top)) {
        throw UsageError("\"" + text +
                         "\" is no background: write white, black, grey, #rrggbb or two of them "
                         "from the bottom up, \"white,#8899aa\".");
    }
    return {*bottom, top};
}

}  // namespace kesview
