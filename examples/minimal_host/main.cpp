/// @file
/// A tour of the host: each function is a stop, and prints what a user would see there.

#include "Host.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/math/Ray.h>
#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/report/AReport.h>
#include <KesVizCore/report/AReportFactory.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/SelectionHolder.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace host {
namespace {

// The model's ids, as a host would have them from its reader.
constexpr std::uint64_t kPlate = 100;
constexpr std::uint64_t kBolt = 200;
constexpr std::uint64_t kHead = 31;
const viz::EntityId kBaseTop(kPlate, viz::FaceType, 11);
const viz::EntityId kLeftHole(kPlate, viz::FaceType, 21);
const viz::EntityId kRightHole(kPlate, viz::FaceType, 22);
const viz::RenderId kScene({1}, viz::View3D);
const viz::RenderId kBracket({1, 10}, viz::View3D);
const viz::RenderId kBaseBolt({1, 20}, viz::View3D);
const viz::RenderId kUprightBolt({1, 30}, viz::View3D);

/// A host that goes on after a refusal shows something else than it believes.
void require(bool done, const char* what) {
    if (!done) {
        throw std::runtime_error(what);
    }
}

void heading(const char* text) {
    std::printf("\n=== %s ===\n\n", text);
}

std::string narrow(const std::wstring& text) {
    return viz::Utils::WstringToString(text);
}

const char* yesNo(bool answer) {
    return answer ? "yes" : "no";
}

viz::RenderId pathOf(Host& host, const viz::EntityId& entity) {
    viz::RenderId path;
    require(host.GetRenderer().GetRenderId(entity, path), "an entity is not in the scene");
    return path;
}

viz::RenderId below(viz::RenderId path, std::initializer_list<std::uint64_t> ids) {
    for (const std::uint64_t id : ids) {
        path.AddValue(id);
    }
    return path;
}

std::string legend(Host& host) {
    std::string text;
    host.GetAdapter().GetSceneGraphStructure(text, true);
    return text;
}

/// With the numbers of columns and rows, so that pixels can be named, and with the meaning of
/// letters that are new; rows without anything in them are left out.
void printPicture(Host& host) {
    const std::string known = legend(host);
    std::printf("     0         10        20        30        40        50\n");
    std::istringstream rows(host.GetView().Picture());
    int y = 0;
    for (std::string row; std::getline(rows, row); ++y) {
        if (!row.empty()) {
            std::printf("%3d  %s\n", y, row.c_str());
        }
    }
    const std::string added = legend(host).substr(known.size());
    std::printf("%s%s", added.empty() ? "" : "\n", added.c_str());
}

void printStructure(Host& host) {
    std::string structure;
    host.GetAdapter().GetSceneStructure(structure, false);
    std::printf("%s", structure.c_str());
}

void printProgress(const int& done, const int& total, const char* text) {
    std::printf("  %d of %d: %s\n", done, total, text);
}

// --- the stops ----------------------------------------------------------------------------------

/// The loaders have run when the host went up.
void printLoaded(Host& host) {
    heading("Loading the model");
    for (const viz::VizMesh* mesh : host.GetGeometry().GetMeshes()) {
        std::printf("  mesh \"%s\": %s, %d faces, %d edges\n", narrow(mesh->GetVisualID()).c_str(),
                    narrow(mesh->GetMechanicalID()).c_str(),
                    static_cast<int>(mesh->GetFaces().size()),
                    static_cast<int>(mesh->GetEdges().size()));
    }
    const viz::VizPMIContainer& pmi = host.GetPmi();
    std::printf(
        "  %d annotations, %d records, %d views, %d captures\n",
        static_cast<int>(pmi.GetVizPMIs().size()), static_cast<int>(pmi.GetSemanticPMIs().size()),
        static_cast<int>(pmi.GetViews().size()), static_cast<int>(pmi.GetCaptures().size()));
    std::printf("  %d elements that stand for entities\n",
                static_cast<int>(host.GetElements().size()));
}

void build(Host& host) {
    heading("Building the scene");
    BracketRenderer& renderer = host.GetRenderer();
    renderer.SetProgressCallback(printProgress);
    renderer.SetReportMode(true);
    require(renderer.Render(), "the library refused a part of the scene");
    renderer.SetProgressCallback(nullptr);
    const viz::RendererReport& report = renderer.GetReport();
    std::printf("\n  %d bodies, %d faces, %d edges, %d triangles\n\n",
                static_cast<int>(report.Bodies), static_cast<int>(report.Faces),
                static_cast<int>(report.Edges), static_cast<int>(report.Triangles));
    printStructure(host);
}

void look(Host& host) {
    heading("Looking at it");
    const float eye[3] = {31, -60, 47};
    const float target[3] = {0, 0, 0};
    const float up[3] = {0, 0, 1};
    View& view = host.GetView();
    view.SetCamera(eye, target, up);
    view.FitAll();
    float box[6];
    require(host.GetAdapter().GetExtents(kScene, box), "there is nothing to see");
    std::printf("  all of it lies between %.1f, %.1f, %.1f and %.1f, %.1f, %.1f\n\n", box[0],
                box[1], box[2], box[3], box[4], box[5]);
    printPicture(host);
}

std::unique_ptr<viz::AReport> makeReport() {
    viz::AReportFactory* const factory = viz::AReportFactory::GetActiveReportFactory();
    require(factory != nullptr, "no report factory");
    return std::unique_ptr<viz::AReport>(factory->MakeReport());
}

void printReport(Host& host) {
    heading("A report of one bolt");
    const std::unique_ptr<viz::AReport> report = makeReport();
    report->StartReport("Bolt");
    report->AddComment(L"Each of the two bolts is a container; they share one body.");
    require(host.GetAdapter().GetNode(kBaseBolt)->GetReport(*report), "no report");
    report->EndReport();
    std::printf("%s", narrow(report->ToText()).c_str());
}

std::unique_ptr<viz::AReport> sceneReport(Host& host) {
    std::unique_ptr<viz::AReport> report = makeReport();
    report->StartReport("Scene");
    require(host.GetAdapter().GetNode(kScene)->GetReport(*report), "no report");
    report->EndReport();
    return report;
}

/// A name that no other process uses at the same time.
std::filesystem::path temporaryFile() {
    std::random_device random;
    return std::filesystem::temp_directory_path() /
           ("minimal_host_" + std::to_string(random()) + "_" + std::to_string(random()) + ".txt");
}

void keepReport(Host& host, const viz::AReport& scene) {
    heading("Saving a report, reading it back, comparing");
    const std::filesystem::path path = temporaryFile();
    const std::unique_ptr<viz::AReport> restored = makeReport();
    const bool kept = scene.SaveTo(path.wstring()) && restored->Restore(path.wstring());
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    require(kept, "the report was not kept");

    std::wstring difference;
    std::string detail;
    std::printf("  report %s restored, the same: %s\n", restored->GetName().c_str(),
                yesNo(restored->Compare(scene, difference, detail)));
    viz::RenderId face = pathOf(host, kBaseTop);
    require(host.GetRenderer().Activate(face), "nothing to highlight");
    std::printf("  with a face highlighted, the same: %s\n",
                yesNo(sceneReport(host)->Compare(scene, difference, detail)));
    require(host.GetRenderer().Deactivate(face), "nothing to take back");
    std::printf("  %s\n  %s\n", detail.c_str(), narrow(difference).c_str());
}

void nameThings(Host& host) {
    heading("From an entity to its render id and back");
    viz::AView3DAdapter& adapter = host.GetAdapter();
    const viz::RenderId path = pathOf(host, kBaseTop);
    const viz::GeoNode* const node = adapter.GetNode(path);
    require(node != nullptr, "the composed id is no path");
    viz::EntityId converted;
    adapter.Convert(path, converted);
    viz::EntityId entity;
    require(host.GetRenderer().GetEntityId(path, entity), "the path names no entity");
    viz::RenderId grouped;
    host.GetBuilder().BuildRenderId(grouped, viz::FaceType, kBaseTop, viz::RGBAColor(),
                                    viz::RGBAColor());
    viz::EntityId ungrouped;
    adapter.Convert(grouped, ungrouped);

    std::printf("  entity     %s\n", kBaseTop.ToString().c_str());
    std::printf("  render id  %s\n", path.ToString().c_str());
    std::printf("  its node   %s\n", node->ToString().c_str());
    std::printf("  Convert    %s\n", converted.ToString().c_str());
    std::printf("  renderer   %s\n\n", entity.ToString().c_str());
    std::printf(
        "  Convert reads no ID from a path of this length; the renderer takes the last\n"
        "  id. The builder goes on composing for the container begun last, and a type\n"
        "  in front, for trees grouped by type, is not taken apart again:\n\n");
    std::printf("  container  %s\n", host.GetBuilder().GetContainerRenderId().ToString().c_str());
    std::printf("  with type  %s\n", grouped.ToString().c_str());
    std::printf("  Convert    %s\n", ungrouped.ToString().c_str());
}

void pick(Host& host, int x, int y) {
    std::printf("  pixel %d, %d\n", x, y);
    viz::RenderId id;
    if (!host.GetView().PickAt(x, y, id)) {
        std::printf("    nothing\n");
        return;
    }
    viz::EntityId entity;
    require(host.GetRenderer().GetEntityId(id, entity), "a picked path names no entity");
    std::printf("    %s\n    %s\n    %s\n", narrow(host.GetRenderer().GetToolTip(id)).c_str(),
                id.ToString().c_str(), entity.ToString().c_str());
    host.GetAdapter().GetSelectionHolder()->Add(id);
}

void pickThings(Host& host) {
    heading("Picking by pixel");
    pick(host, 37, 20);  // a face
    pick(host, 38, 17);  // an edge, which wins over its faces
    pick(host, 33, 10);  // the head of the one bolt
    pick(host, 21, 14);  // and of the other
    pick(host, 2, 2);
}

void highlight(Host& host) {
    heading("Highlighting what was picked, but for the head of the base bolt");
    viz::SelectionHolder& selection = *host.GetAdapter().GetSelectionHolder();
    const viz::RenderId baseHead = below(kBaseBolt, {kBolt, viz::FaceType, kHead});
    require(selection.Contains(baseHead), "the head was not picked");
    selection.Remove(baseHead);
    for (int at = 0; at < selection.Count(); ++at) {
        require(host.GetRenderer().Activate(selection[at]), "nothing to highlight");
    }
    printPicture(host);
    std::printf("\n  Is the head of the base bolt highlighted? %s: the two heads are one node.\n",
                yesNo(host.GetAdapter().IsHighlighted(baseHead)));
    host.GetAdapter().UnhighlightAll();
    selection.Clear();
}

void hide(Host& host) {
    heading("Hiding one bolt, and all edges");
    viz::AView3DAdapter& adapter = host.GetAdapter();
    adapter.GetRenderingOptions()->SetDisplayEdges(false);
    require(host.GetRenderer().Hide(kUprightBolt), "nothing to hide");
    std::printf("  visible: base bolt %s, upright bolt %s\n\n", yesNo(adapter.IsVisible(kBaseBolt)),
                yesNo(adapter.IsVisible(kUprightBolt)));
    printPicture(host);
    std::printf("\n");
    adapter.ShowAll();
    adapter.GetRenderingOptions()->SetDisplayEdges(true);
}

void isolate(Host& host) {
    heading("The upright bolt alone");
    require(host.GetAdapter().Isolate(kUprightBolt), "nothing to isolate");
    printPicture(host);
    host.GetAdapter().ShowAll();
}

/// The path by which a node knows itself; the library makes it on its own heap.
std::string ownPath(const viz::GeoNode& node) {
    viz::RenderId* path = node.GetRenderId();
    require(path != nullptr, "out of memory");
    std::string text = path->ToString();
    viz::RenderId::DeleteRenderId(path);
    return text;
}

void moveAndDelete(Host& host) {
    heading("Moving geometry and deleting");
    viz::AView3DAdapter& adapter = host.GetAdapter();
    const viz::RenderId left = pathOf(host, kLeftHole);
    const viz::RenderId right = pathOf(host, kRightHole);

    require(adapter.OpenNodes(left), "no left hole");  // geometry moves to the open node
    require(host.GetBuilder().MoveGeometryFrom(right), "no right hole");
    adapter.CloseAllNodes();
    std::printf("  both walls now on %s\n", adapter.GetNode(left)->ToString().c_str());

    host.GetBuilder().Delete(right);  // answers false whatever happens
    std::printf("  right hole there: %s\n", yesNo(adapter.GetNode(right) != nullptr));

    const viz::GeoNode& bolt = *adapter.GetNode(below(kUprightBolt, {kBolt}));
    std::printf("  the bolt's own path: %s\n", ownPath(bolt).c_str());
    require(adapter.DeleteNode(below(kBaseBolt, {kBolt})), "no bolt to delete");
    std::printf("  with the first reference deleted: %s\n", ownPath(bolt).c_str());

    adapter.OpenTopNode();  // a path of two ids is looked for in the open node
    require(adapter.DeleteNode(kBaseBolt), "no container to delete");
    adapter.CloseTopNode();

    const viz::RenderId edges = below(kBracket, {kPlate, viz::EdgeType});
    adapter.Clear(edges);
    std::printf("  edges left on the plate: %s\n\n", yesNo(adapter.GetNode(edges)->HasChildren()));
    printPicture(host);
}

void rebuild(Host& host, const viz::AReport& first) {
    heading("Clearing, and building again");
    BracketRenderer& renderer = host.GetRenderer();
    require(renderer.Update(), "the library refused a part of the scene");
    std::wstring difference;
    std::string detail;
    std::printf("  the same as at first: %s\n",
                yesNo(sceneReport(host)->Compare(first, difference, detail)));
    renderer.Clear();
    std::printf("  cleared, empty: %s\n  ", yesNo(renderer.IsEmpty()));
    printStructure(host);
    require(renderer.Render(), "the library refused a part of the scene");
}

// --- the annotations ----------------------------------------------------------------------------

using RenderIds = std::vector<viz::RenderId>;

/// Copies the library's array, and releases it; empty ids stand for what is not in the scene.
RenderIds takeOver(viz::RenderId* ids, int count) {
    RenderIds taken(ids, ids + count);
    viz::RenderId::DeleteRenderIdArr(ids);
    return taken;
}

/// The part stays: what is no member is hidden only where it is an annotation.
void showMembersAlone(Host& host, const viz::VizPMICollection& collection) {
    viz::RenderId* ids = nullptr;
    int count = 0;
    require(collection.GetMemberRenderIds(ids, count, false), "no elements");
    for (const viz::RenderId& id : takeOver(ids, count)) {
        host.GetPmiRenderer().Show(id);  // false says only that it was shown already
    }
    require(collection.GetNonmemberRenderIds(ids, count), "members that are none");
    viz::EntityId entity;
    for (const viz::RenderId& id : takeOver(ids, count)) {
        if (host.GetPmiRenderer().GetEntityId(id, entity)) {
            host.GetPmiRenderer().Hide(id);
        }
    }
}

void showViews(Host& host) {
    heading("The annotations of a view");
    require(host.GetPmiRenderer().Render(), "the library refused an annotation");
    host.GetView().FitAll();
    const std::vector<viz::VizView*>& views = host.GetPmi().GetViews();
    for (viz::VizView* view : views) {
        view->AccumulatePMIExtrema();
        const float* extents = nullptr;
        require(view->GetExtents(extents), "a view without extents");
        std::printf("%s  view %s, annotations: %d, from %.1f, %.1f to %.1f, %.1f in its plane\n\n",
                    view == views.front() ? "" : "\n", narrow(view->GetName()).c_str(),
                    view->GetMemberCount(), extents[0], extents[1], extents[2], extents[3]);
        showMembersAlone(host, *view);
        printPicture(host);
    }
}

void showCaptures(Host& host) {
    heading("What a capture shows");
    const std::vector<viz::VizCapture*>& captures = host.GetPmi().GetCaptures();
    for (const viz::VizCapture* capture : captures) {
        float eye[3];
        float target[3];
        float up[3];
        require(capture->GetOrientation(eye, target, up), "a capture without a camera");
        showMembersAlone(host, *capture);
        host.GetView().SetCamera(eye, target, up);
        host.GetView().FitAll();
        std::printf("%s  capture %s\n\n", capture == captures.front() ? "" : "\n",
                    narrow(capture->GetName()).c_str());
        printPicture(host);
    }
}

std::string displayName(Host& host, const std::wstring& mechanicalId) {
    std::wstring name;
    require(host.GetPmi().GetDisplayName(mechanicalId, name), "no such annotation");
    return narrow(mechanicalId + L", " + name);
}

/// What the graph answers says which face it is, of which the model knows the annotations.
void printAnnotationsOf(Host& host, const viz::Ray& ray) {
    viz::RenderId id;
    viz::EntityId face;
    if (!host.GetAdapter().PickVisual(ray, id) || !host.GetRenderer().GetEntityId(id, face)) {
        return;
    }
    const auto element = host.GetElements().find(face);
    require(element != host.GetElements().end(), "a face that was not loaded");
    std::printf("    of it, %s\n", narrow(element->second->GetVisualID()).c_str());
    const auto [begin, end] = host.GetAnnotationsByFace().equal_range(face);
    for (auto link = begin; link != end; ++link) {
        std::printf("    annotated by %s\n", displayName(host, link->second).c_str());
    }
}

void printFacesOf(const viz::VizPMI& annotation) {
    for (const std::wstring& visualId : annotation.GetLinkedEntityIDs()) {
        std::printf("    speaks of %s\n", narrow(visualId).c_str());
    }
}

void pickElement(Host& host, int x, int y) {
    std::printf("  pixel %d, %d\n", x, y);
    viz::Ray ray;
    require(host.GetView().GetRay(x, y, ray), "a pixel outside of the picture");
    viz::VizElement* element = nullptr;
    const bool isPart = host.GetGeometry().PickVisual(&host.GetAdapter(), ray, element);
    if (!isPart && !host.GetPmi().PickVisual(&host.GetAdapter(), ray, element)) {
        std::printf("    no element\n");
        return;
    }
    std::printf("    %s, visual id \"%s\"\n", element->GetElementType().c_str(),
                narrow(element->GetVisualID()).c_str());
    if (isPart) {
        printAnnotationsOf(host, ray);
    } else if (element->GetElementType() == viz::VizPMI::TypeID()) {
        printFacesOf(static_cast<const viz::VizPMI&>(*element));
    }
}

void pickElements(Host& host) {
    heading("From a pick to an element");
    pickElement(host, 36, 17);  // a wall
    pickElement(host, 30, 10);  // the head of a bolt, which nothing speaks of
    pickElement(host, 35, 7);   // the line of an annotation
    pickElement(host, 2, 2);
}

void printDumps(Host& host) {
    heading("The dumps");
    const viz::VizPMIContainer& pmi = host.GetPmi();
    for (const wchar_t* id : {L"DIM-1", L"TOL-1"}) {
        std::wstring record;
        require(pmi.GetSemanticPMIAsString(id, record), "an annotation without a record");
        std::printf("%s%s\n", narrow(pmi.GetVizPMI(id)->ToString()).c_str(),
                    narrow(record).c_str());
    }
    for (const viz::VizView* view : pmi.GetViews()) {
        std::printf("%s\n", narrow(view->GetViewAsString()).c_str());
    }
    for (const viz::VizCapture* capture : pmi.GetCaptures()) {
        std::printf("%s\n", narrow(capture->GetCaptureAsString()).c_str());
    }
}

void tour() {
    Host host;
    printLoaded(host);
    build(host);
    look(host);
    printReport(host);
    const std::unique_ptr<viz::AReport> first = sceneReport(host);
    keepReport(host, *first);
    nameThings(host);
    pickThings(host);
    highlight(host);
    hide(host);
    isolate(host);
    moveAndDelete(host);
    rebuild(host, *first);
    showViews(host);
    pickElements(host);
    showCaptures(host);
    printDumps(host);
}  // the shared bolt is in the scene when the host goes

}  // namespace
}  // namespace host

int main() {
    try {
        host::tour();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "minimal_host: %s\n", error.what());
        return 1;
    }
}
