// A concrete class for each polymorphic class of the public headers, whose virtual table names
// what stands in every slot, the pure operations included. This file is never linked: g++ dumps
// the classes and writes the tables as assembly, which VtableSlotsTest reads.
//
// Each class overrides the pure operations, and the destructor where it is virtual, no more. The
// first of these is defined outside the class, so that the compiler emits the table here. No
// object is ever made, so that a class whose constructors are private can be completed as well.

#include <KesVizCore/KesVizCore.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace KesVizCore::Structure {

/// Completes a class that has no pure operations; the others have a specialisation each.
template <class Base>
class Concrete final : public Base {
    ~Concrete() override;
};

template <class Base>
Concrete<Base>::~Concrete() = default;

/// Completes the geometry items: each leaves the same three operations to the host.
template <class Item>
class ConcreteItem final : public Item {
    ~ConcreteItem() override;
    bool GetExtents(float* extrema) const override;
    void SetVisible(const bool& visible) override;
    bool IsVisible() const override;
};

template <class Item>
ConcreteItem<Item>::~ConcreteItem() = default;

/// Completes the loaders that know what they make: each leaves the filling to the host.
template <class Loader>
class ConcreteLoader final : public Loader {
    ~ConcreteLoader() override;
    VizElement* createAndFill() override;
};

template <class Loader>
ConcreteLoader<Loader>::~ConcreteLoader() = default;

template <>
class Concrete<AGeometryItemFactory> final : public AGeometryItemFactory {
    AGeometryItem* CreateTriangleSet(const std::uint64_t& id, float* vertices, float* normals,
                                     int* indices, int vertexCount, int normalCount, int indexCount,
                                     TriangleType triangleType) override;
    AGeometryItem* CreatePolyline(const std::uint64_t& id, float* points, int count) override;
    AGeometryItem* CreateFilledPolyline(const std::uint64_t& id, float* points, int count) override;
    AGeometryItem* CreatePointCloud(const std::uint64_t& id, const int& count,
                                    float* points) override;
    AGeometryItem* CreateVertex(const std::uint64_t& id, float* const position) override;
    AGeometryItem* CreateText(const std::uint64_t& id, const std::wstring& firstText,
                              const std::wstring& secondText, float* position, const FontAttr& font,
                              const float& number) override;
};

AGeometryItem* Concrete<AGeometryItemFactory>::CreateTriangleSet(const std::uint64_t&, float*,
                                                                 float*, int*, int, int, int,
                                                                 TriangleType) {
    return nullptr;
}

template <>
class Concrete<AReport> final : public AReport {
    ~Concrete() override;
    void start(std::string name) override;
    void end() override;
    void openElement(std::string name) override;
    void closeElement() override;
    void addAttribute(std::string name, bool value) override;
    void addAttribute(std::string name, std::uint64_t value) override;
    void addAttribute(std::string name, std::wstring value) override;
    void addAttribute(std::string name, double value) override;
    void addComment(std::wstring comment) override;
    void addText(std::wstring text) override;
    std::wstring toText() const override;
    bool saveTo(std::wstring path) const override;
    bool restore(std::wstring path) override;
    bool compare(const AReport& other, std::wstring& difference,
                 std::string& detail) const override;
};

Concrete<AReport>::~Concrete() = default;

template <>
class Concrete<AReportFactory> final : public AReportFactory {
    AReport* MakeReport() override;
    ~Concrete() override;
};

AReport* Concrete<AReportFactory>::MakeReport() {
    return nullptr;
}

template <>
class Concrete<IRendererReportProvider> final : public IRendererReportProvider {
    void SetReportMode(const bool& on) override;
    bool GetReportMode() override;
    void ClearReport() override;
    RendererReport& GetReport() override;
};

void Concrete<IRendererReportProvider>::SetReportMode(const bool&) {}

template <>
class Concrete<IRenderTimeReportProvider> final : public IRenderTimeReportProvider {
    double GetRenderTime() const override;
    void AddRenderTime(double seconds) override;
    void ClearRenderTime() override;
};

double Concrete<IRenderTimeReportProvider>::GetRenderTime() const {
    return 0.0;
}

template <>
class Concrete<ARenderer> final : public ARenderer {
    ~Concrete() override;
    std::wstring GetName() const override;
    bool Render() override;
    bool Update() override;
    void Clear() override;
    bool IsEmpty() const override;
    bool Deactivate(RenderId& id) override;
    bool Show(const RenderId& id) override;
    bool Hide(const RenderId& id) override;
    bool GetEntityId(const RenderId& id, EntityId& out) const override;
    bool GetRenderId(const EntityId& entity, RenderId& out) const override;
};

Concrete<ARenderer>::~Concrete() = default;

template <>
class Concrete<AView3DAdapterFactory> final : public AView3DAdapterFactory {
    AView3DAdapter* makeView3DAdapterImpl() override;
    ~Concrete() override;
};

AView3DAdapter* Concrete<AView3DAdapterFactory>::makeView3DAdapterImpl() {
    return nullptr;
}

template <>
class Concrete<IRenderingOptions> final : public IRenderingOptions {
    ~Concrete() override;
    void AddListener(IRenderingOptionsListener* listener) override;
    void RemoveListener(IRenderingOptionsListener* listener) override;
    std::uint64_t GetNumberOfListeners(IRenderingOptionsListener* listener) override;
};

Concrete<IRenderingOptions>::~Concrete() = default;

template <>
class Concrete<IRenderingOptionsListener> final : public IRenderingOptionsListener {
    ~Concrete() override;
    void OnOptionsChange(RenderingOptions* changed) override;
};

Concrete<IRenderingOptionsListener>::~Concrete() = default;

template <>
class Concrete<AFilterManager> final : public AFilterManager {
    ~Concrete() override;
    void SetVisible(int filterId, bool visible) override;
    bool IsVisible(int filterId) const override;
    void Reset() override;
};

Concrete<AFilterManager>::~Concrete() = default;

template <>
class Concrete<AView3DAdapter> final : public AView3DAdapter {
    ~Concrete() override;
    IView3D* GetView3D() override;
    bool IsConstructing() const override;
    bool OpenNode(const std::uint64_t& id, const std::wstring& name) override;
    void CloseNode() override;
    void CloseAllNodes() override;
    bool CreateNode(const std::uint64_t& id, const std::wstring& name) override;
    bool CreateGeoNode(const std::uint64_t& id, const std::wstring& name) override;
    void DeleteAllNodes() override;
    void ApplyAttribute(Attribute* attribute) override;
    void RemoveAttribute(const AttributeType& type) override;
    void AddGeometryItem(AGeometryItem* item) override;
    AGeometryItemFactory* GetGeometryItemFactory() override;
    void ClearScene(const RenderId& id) override;
    bool Show(const RenderId& id) override;
    bool Hide(const RenderId& id) override;
    bool Highlight(const RenderId& id, const RGBAColor& color) override;
    bool Unhighlight(const RenderId& id) override;
    void UnhighlightAll() override;
    bool IsVisible(const RenderId& id) override;
    bool GetExtents(const RenderId& id, float* extrema) override;
    RenderingOptions* GetRenderingOptions() override;
    bool Isolate(const RenderId& id) override;
    void ShowAll() override;
    void BeginUpdate() override;
    void EndUpdate() override;
};

Concrete<AView3DAdapter>::~Concrete() = default;

template <>
class Concrete<AVizContainer> final : public AVizContainer {
    ~Concrete() override;
    std::string GetTypeName() override;
};

Concrete<AVizContainer>::~Concrete() = default;

template <>
class Concrete<AVizElementLoader> final : public AVizElementLoader {
    ~Concrete() override;
    VizElement* makeOne() override;
    VizElement* createAndFill() override;
};

Concrete<AVizElementLoader>::~Concrete() = default;

template <>
class Concrete<IRayPickListener> final : public IRayPickListener {
    void OnPick(const Ray& ray) override;
    ~Concrete() override;
};

void Concrete<IRayPickListener>::OnPick(const Ray&) {}

template <>
class Concrete<IView3D> final : public IView3D {
    ~Concrete() override;
    void GetViewport(int& width, int& height) const override;
    void SetViewport(int width, int height) override;
    void GetCamera(float* eye, float* target, float* up) const override;
    void SetCamera(const float* eye, const float* target, const float* up) override;
    void GetViewExtent(float& width, float& height) const override;
    bool IsPerspective() const override;
    void SetPerspective(bool perspective) override;
    void FitAll() override;
    void GetSceneGraphStructure(std::string& out, bool flag) override;
    bool GetRay(int x, int y, Ray& ray) const override;
    bool PickAt(int x, int y, RenderId& id) override;
    void GetBackground(RGBAColor& color) const override;
    void SetBackground(const RGBAColor& color) override;
    bool SaveImage(const std::wstring& path) override;
    void Invalidate() override;
    void SetAntialiasLevel(int level) override;
    void AttachView3DAdapter(AView3DAdapter* adapter) override;
    void Render() override;
};

Concrete<IView3D>::~Concrete() = default;

template <>
class Concrete<IViewDoUndoStrategy> final : public IViewDoUndoStrategy {
    bool Apply(const RenderId& id) override;
    bool Undo(const RenderId& id) override;
    void UndoAll() override;
    bool IsApplied(const RenderId& id) override;
    ~Concrete() override;
};

bool Concrete<IViewDoUndoStrategy>::Apply(const RenderId&) {
    return false;
}

template <>
class Concrete<VizElement> final : public VizElement {
    std::string GetElementType() const override;
    ~Concrete() override;
};

std::string Concrete<VizElement>::GetElementType() const {
    return {};
}

template <>
class Concrete<VizPMICollection> final : public VizPMICollection {
    std::string GetElementType() const override;
    ~Concrete() override;
};

std::string Concrete<VizPMICollection>::GetElementType() const {
    return {};
}

template class ConcreteItem<AGeometryItem>;
template class ConcreteItem<AGeometryItemFilledPolyline>;
template class ConcreteItem<AGeometryItemPointCloud>;
template class ConcreteItem<AGeometryItemPolyline>;
template class ConcreteItem<AGeometryItemText>;
template class ConcreteItem<AGeometryItemTriangleSet>;
template class ConcreteItem<AGeometryItemVertex>;
template class ConcreteLoader<AVizCaptureLoader>;
template class ConcreteLoader<AVizEdgeLoader>;
template class ConcreteLoader<AVizFaceLoader>;
template class ConcreteLoader<AVizMeshLoader>;
template class ConcreteLoader<AVizPMILoader>;
template class ConcreteLoader<AVizPointSetLoader>;
template class ConcreteLoader<AVizPointsLoader>;
template class ConcreteLoader<AVizPolygonLoader>;
template class ConcreteLoader<AVizPolygonLoopLoader>;
template class ConcreteLoader<AVizTextLoader>;
template class ConcreteLoader<AVizViewLoader>;
template class ConcreteLoader<AVizWireLoader>;
template class Concrete<ASceneBuilderContext>;
template class Concrete<Attribute>;
template class Concrete<AttributeColor>;
template class Concrete<AttributeHighlight>;
template class Concrete<AttributeLineStyle>;
template class Concrete<AttributeTransform>;
template class Concrete<AttributeVisibility>;
template class Concrete<BodyContext>;
template class Concrete<ConstructionContext>;
template class Concrete<ContainerContext>;
template class Concrete<EntityContext>;
template class Concrete<EntityTypeContext>;
template class Concrete<GeoNode>;
template class Concrete<ITextManagerProvider>;
template class Concrete<Node>;
template class Concrete<RenderingOptions>;
template class Concrete<SceneBuilder>;
template class Concrete<SceneBuilderFactory>;
template class Concrete<SceneContext>;
template class Concrete<SceneLevelContext>;
template class Concrete<SelectionHolder>;
template class Concrete<SemanticPMI>;
template class Concrete<VizCapture>;
template class Concrete<VizContainer>;
template class Concrete<VizEdge>;
template class Concrete<VizFace>;
template class Concrete<VizMesh>;
template class Concrete<VizPMI>;
template class Concrete<VizPMIContainer>;
template class Concrete<VizPointSet>;
template class Concrete<VizPoints>;
template class Concrete<VizPolygon>;
template class Concrete<VizPolygonLoop>;
template class Concrete<VizText>;
template class Concrete<VizView>;
template class Concrete<VizWire>;
template class Concrete<debugger_streambuf>;

}  // namespace KesVizCore::Structure
