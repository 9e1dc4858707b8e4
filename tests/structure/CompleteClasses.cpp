// Asks for the size of every class of the public headers, so that clang lays it out. This file is
// never linked: clang writes the layouts, which FieldOrderTest reads. It is compiled without the
// control of access, for the private classes inside others.

#include <KesVizCore/KesVizCore.h>

namespace KesVizCore::Structure {

template <class... Classes>
constexpr bool areLaidOut() {
    return ((sizeof(Classes) > 0) && ...);
}

static_assert(
    areLaidOut<
        // core
        EntityId, FontAttr, Pooled, RGBAColor, RenderId,
        // graph
        AGeometryItem, AGeometryItemFactory, AGeometryItemFilledPolyline, AGeometryItemPointCloud,
        AGeometryItemPolyline, AGeometryItemText, AGeometryItemTriangleSet, AGeometryItemVertex,
        Attribute, AttributeColor, AttributeHighlight, AttributeLineStyle, AttributeTransform,
        AttributeType, AttributeVisibility, ChildRange, ChildTable, ChildTable::Directory,
        ChildTable::Entry, ChildTable::Iterator, ChildTable::Run, ChildTable::Run::Release,
        CompactName, GeoNode, Node, PointerList<AGeometryItem>, PointerList<Attribute>,
        PointerList<Node>,
        // math
        Pick, Ray,
        // model
        AVizCaptureLoader, AVizContainer, AVizEdgeLoader, AVizElementLoader, AVizFaceLoader,
        AVizMeshLoader, AVizPointSetLoader, AVizPointsLoader, AVizPolygonLoader,
        AVizPolygonLoopLoader, AVizTextLoader, AVizViewLoader, AVizWireLoader, VizBox, VizCapture,
        VizContainer, VizEdge, VizElement, VizFace, VizMesh, VizPointSet, VizPoints, VizPolygon,
        VizPolygonLoop, VizText, VizTransf, VizView, VizWire,
        // pmi
        AVizPMILoader, SemanticPMI, VizPMI, VizPMICollection, VizPMIContainer, VizPMIType,
        // report
        AReport, AReportFactory, Stopwatch, Utils, debugger_streambuf,
        // scene
        ARenderer, ASceneBuilderContext, AView3DAdapterFactory, BodyContext, ConstructionContext,
        ContainerContext, EntityContext, EntityTypeContext, IRenderTimeReportProvider,
        IRendererReportProvider, IRenderingOptions, IRenderingOptionsListener, RendererReport,
        RenderingOptions, SceneBuilder, SceneBuilderFactory, SceneContext, SceneLevelContext,
        Settings, TextDimension, VizFactories,
        // view
        AFilterManager, ATextManager, AView3DAdapter, IRayPickListener, ITextManagerProvider,
        IView3D, IViewDoUndoStrategy, SelectionHolder>());

}  // namespace KesVizCore::Structure
