// Asks for the size of every class of the public headers, so that clang lays it out. This file is
// never linked: clang writes the layouts, which FieldOrderTest reads.

#include <KesVizCore/KesVizCore.h>

namespace KesVizCore::Structure {

template <class... Classes>
constexpr bool areLaidOut() {
    return ((sizeof(Classes) > 0) && ...);
}

static_assert(
    areLaidOut<
        // core
        EntityId, FontAttr, RGBAColor, RenderId,
        // graph
        AGeometryItem, AGeometryItemFactory, AGeometryItemFilledPolyline, AGeometryItemPointCloud,
        AGeometryItemPolyline, AGeometryItemText, AGeometryItemTriangleSet, AGeometryItemVertex,
        Attribute, AttributeColor, AttributeHighlight, AttributeLineStyle, AttributeTransform,
        AttributeType, AttributeVisibility, GeoNode, Node,
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
