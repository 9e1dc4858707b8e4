/// @file
/// Any sequence of calls to scene builders, to their guards and to the editing operations of their
/// adapter, beside a model that says every answer, the graph, its dump and the debug text.
///
/// Left out is what a host must not do: a reference that closes a cycle, and an edit that destroys
/// a node while it is open.

#include "AdapterModel.h"
#include "Input.h"
#include "support/CapturedDebugText.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <cstring>
#include <map>
#include <memory>

namespace {

using namespace KesVizCore;
using Fuzz::Check;
using Fuzz::Input;
using Fuzz::ModelAttribute;
using Fuzz::ModelBuilder;
using Fuzz::ModelEntity;
using Fuzz::ModelPath;
using Fuzz::Values;

/// The recording host, which also clears scenes: it drops the scene's node.
class Adapter : public support::RecordingAdapter {
public:
    using support::RecordingAdapter::DeleteNode;
    void ClearScene(const RenderId& id) override { _rootNode->DeleteChildById(id[0]); }
};

void append(std::string& text, double number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    text.append(bytes, sizeof number);
}

std::string textOf(const RGBAColor& color) {
    return std::to_string(color.GetRed()) + "," + std::to_string(color.GetGreen()) + "," +
           std::to_string(color.GetBlue()) + "," + std::to_string(color.GetAlpha());
}

std::string colorText(const RGBAColor& color, bool priority) {
    return textOf(color) + (color.GetAlpha() == 255 ? " opaque" : "") +
           (priority ? " priority" : "");
}

std::string matrixText(const double* matrix) {
    std::string text;
    for (int place = 0; place < 16; ++place) {
        append(text, matrix[place]);
    }
    return text;
}

std::string lineText(float width, const std::string& style) {
    std::string text = style + " ";
    append(text, double{width});
    return text;
}

std::string attributeText(Attribute* attribute) {
    if (auto* const color = dynamic_cast<AttributeColor*>(attribute)) {
        const RGBAColor held = color->GetColor();
        Check(color->GetIsOpaque() == (held.GetAlpha() == 255), "GetIsOpaque");
        return colorText(held, color->HasPriority());
    }
    if (auto* const highlight = dynamic_cast<AttributeHighlight*>(attribute)) {
        return textOf(highlight->GetOriginalColor());
    }
    if (auto* const transform = dynamic_cast<AttributeTransform*>(attribute)) {
        return matrixText(transform->GetTransform());
    }
    if (auto* const visibility = dynamic_cast<AttributeVisibility*>(attribute)) {
        return visibility->GetIsVisible() ? "visible" : "hidden";
    }
    auto* const line = dynamic_cast<AttributeLineStyle*>(attribute);
    Check(line != nullptr, "kind of an attribute");
    return lineText(line->GetWeight(), line->GetPattern());
}

std::string floatsText(float red, float green, float blue, float alpha) {
    std::string text;
    for (const float channel : {red, green, blue, alpha}) {
        append(text, double{channel});
    }
    return text;
}

std::string itemText(AGeometryItem* item) {
    if (item == nullptr) {
        return {};
    }
    const float* const color = item->GetColor();
    return std::to_string(item->ID()) + floatsText(color[0], color[1], color[2], color[3]);
}

RGBAColor anyColor(Input& input) {
    const unsigned short red = input.Byte();
    return RGBAColor(red, input.Byte(), 7, input.Flag() ? 255 : input.Byte());
}

std::uint64_t anyId(Input& input) {
    return input.Below(16) == 0 ? input.Any<std::uint64_t>() : input.Below(16);
}

class SceneProtocol {
public:
    SceneProtocol() : _graph(_model.graph, &attributeText, &itemText) {
        _graph.Adopt(_adapter._rootNode);
        _adapter.ownsRoot = false;
        _adapter.refusesToOpen = _adapter.refusesToCreate = {_model.refused};
        for (int made = 0; made < kBuilders; ++made) {
            _builders.push_back(_factory.MakeSceneBuilder(&_adapter));
        }
        _model.builders.resize(kBuilders);
    }

    ~SceneProtocol() {
        for (SceneBuilder*& builder : _builders) {
            _factory.DeleteSceneBuilder(builder);
        }
        _graph.DestroyAll();
        checkDeaths();
    }
    SceneProtocol(const SceneProtocol&) = delete;
    SceneProtocol& operator=(const SceneProtocol&) = delete;

    void Run(Input& input) {
        while (!input.IsAtEnd()) {
            call(input, 0);
        }
        checkDump();
    }

private:
    static constexpr int kBuilders = 2;
    static constexpr int kMostNodes = 200;
    static constexpr int kDeepestGuards = 12;

    /// The builder that calls go to, and its model.
    SceneBuilder& builder() { return *_builders[_current]; }
    ModelBuilder& state() { return _model.builders[_current]; }

    void call(Input& input, int depth) {
        if (input.Below(32) == 0) {
            _current = 1 - _current;
        }
        switch (input.Below(6)) {
            case 0:
            case 1:
                nest(input, depth);
                break;
            case 2:
                set(input);
                break;
            case 3:
                edit(input);
                break;
            case 4:
                open(input);
                break;
            default:
                ask(input);
        }
        checkAll();
    }

    // ---- nested calls

    struct Begin {
        unsigned kind = 0;
        std::uint64_t id = 0;
        std::wstring name;
        bool isColored = false;
        RGBAColor color;
    };

    static constexpr std::int64_t kTypes[] = {-1, 10000, 10001, 10002, 10003, 13, 10012, 99999};

    static Begin anyBegin(Input& input) {
        Begin begin;
        begin.kind = input.Below(7);
        begin.id = anyId(input);
        if (begin.kind == 5) {
            begin.id = static_cast<std::uint64_t>(kTypes[begin.id % 8]);
        }
        begin.name = input.Text(4);
        begin.isColored = input.Flag();
        begin.color = anyColor(input);
        return begin;
    }

    /// A level with others in it, by a guard or by Begin and End; an End too few or too many.
    void nest(Input& input, int depth) {
        const Begin begin = anyBegin(input);
        const unsigned way = input.Below(4);
        if (way == 0 && depth < kDeepestGuards) {
            guarded(input, begin, depth);
        } else if (way == 1) {
            end(begin.kind);
        } else {
            const bool begun = modelBegin(begin, begin.isColored);
            if (realBegin(begin) != begun) {
                Fuzz::Fail("Begin of " + std::to_string(begin.id) +
                           (begun ? " refuses" : " is not refused"));
            }
            adopt();
        }
    }

    bool modelBegin(const Begin& begin, bool isColored) {
        if (begin.kind == 0) {
            _model.OpenTopNode();
            state().scenes.clear();
            return true;
        }
        if (_graph.Count() >= kMostNodes && wouldCreate(begin.id)) {
            // Enough for one run: this one is refused by the host.
            _adapter.refusesToCreate.insert(begin.id);
            return false;
        }
        if (!_model.OpenOrCreate(begin.id, begin.name)) {
            return false;
        }
        if (begin.kind == 1) {
            state().scenes.push_back(begin.id);
        } else if (begin.kind == 3 && !begin.isColored) {
            state().containers.push_back(begin.id);
        } else if (begin.kind == 5) {
            _model.SetFilter(static_cast<int>(static_cast<std::int64_t>(begin.id)));
        } else if ((begin.kind == 4 || begin.kind == 6) && isColored) {
            _model.ApplyAttribute({AttributeType::Color, colorText(begin.color, false)});
        }
        return true;
    }

    bool wouldCreate(std::uint64_t id) const {
        Fuzz::AdapterModel trial = _model;
        return !trial.OpenNode(id) && trial.CreateNode(id, L"");
    }

    static SceneBuilder::ContainerType containerType(const Begin& begin) {
        return begin.isColored ? static_cast<SceneBuilder::ContainerType>(1 + begin.id % 3)
                               : SceneBuilder::AddressedContainer;
    }

    static EntityType entityType(const Begin& begin) {
        return static_cast<EntityType>(static_cast<std::int64_t>(begin.id));
    }

    bool realBegin(const Begin& begin) {
        const bool isColored = begin.isColored;
        switch (begin.kind) {
            case 0:
                return builder().ConstructionBegin();
            case 1:
                return builder().SceneBegin(begin.id, begin.name);
            case 2:
                return builder().SceneLevelBegin(begin.id, begin.name);
            case 3:
                return builder().ContainerBegin(begin.id, begin.name, containerType(begin));
            case 4:
                return isColored ? builder().BodyBegin(begin.id, begin.name, begin.color)
                                 : builder().BodyBegin(begin.id, begin.name);
            case 5:
                return builder().EntityTypeBegin(entityType(begin), begin.name);
            default:
                return isColored ? builder().EntityBegin(begin.id, begin.name, begin.color)
                                 : builder().EntityBegin(begin.id, begin.name);
        }
    }

    void guarded(Input& input, const Begin& begin, int depth) {
        SceneBuilder* const made = &builder();
        const std::size_t current = _current;
        const bool begun = modelBegin(begin, begin.isColored && begin.kind == 6);
        const auto inside = [&](const ASceneBuilderContext& context) {
            Check(context.IsOK() == begun, "IsOK of a guard");
            adopt();
            checkAll();
            for (unsigned left = input.Below(8); left > 0; --left) {
                call(input, depth + 1);
            }
        };
        switch (begin.kind) {
            case 0:
                inside(ConstructionContext(made));
                break;
            case 1:
                inside(SceneContext(made, begin.id, begin.name));
                break;
            case 2:
                inside(SceneLevelContext(made, begin.id, begin.name));
                break;
            case 3:
                inside(ContainerContext(made, begin.id, begin.name, containerType(begin)));
                break;
            case 4:
                inside(BodyContext(made, begin.id, begin.name));
                break;
            case 5:
                inside(EntityTypeContext(made, entityType(begin), begin.name));
                break;
            default:
                inside(EntityContext(made, begin.id, begin.name, begin.isColored, begin.color));
        }
        if (begun) {
            modelEnd(begin.kind, current);
        }
    }

    void modelEnd(unsigned kind, std::size_t current) {
        if (kind == 0) {
            _model.CloseTopNode();
        } else if (kind == 1) {
            _model.builders[current].hasContent = true;
        } else {
            _model.CloseNode();
        }
    }

    void end(unsigned kind) {
        modelEnd(kind, _current);
        switch (kind) {
            case 0:
                return builder().ConstructionEnd();
            case 1:
                return builder().SceneEnd();
            case 2:
                return builder().SceneLevelEnd();
            case 3:
                return builder().ContainerEnd();
            case 4:
                return builder().BodyEnd();
            case 5:
                return builder().EntityTypeEnd();
            default:
                return builder().EntityEnd();
        }
    }

    /// Notes the node that the library made, if the model has a new one: it is the open one.
    void adopt() {
        if (_graph.Count() < static_cast<int>(_model.graph.nodes.size())) {
            Check(_model.Top() == _graph.Count(), "the model opens what it makes");
            GeoNode* const made = _adapter.GetCurrentOpenNode();
            Check(made != nullptr, "a new node is open");
            _graph.Adopt(made);
        }
    }

    // ---- the open node

    void set(Input& input) {
        switch (input.Below(8)) {
            case 0: {
                const RGBAColor color = anyColor(input);
                const bool priority = input.Flag();
                builder().SetColor(color, priority);
                _model.ApplyAttribute({AttributeType::Color, colorText(color, priority)});
                break;
            }
            case 1: {
                const std::string style(input.Below(20), '-');
                const auto width = static_cast<float>(input.Byte());
                builder().SetLineStyle(style, width);
                _model.ApplyAttribute({AttributeType::LineStyle, lineText(width, style)});
                break;
            }
            case 2:
                setTransformation(input);
                break;
            case 3: {
                const bool visible = input.Flag();
                Check(builder().SetVisibility(visible), "SetVisibility");
                _model.ApplyAttribute({AttributeType::Visibility, visible ? "visible" : "hidden"});
                break;
            }
            case 4: {
                const int filter = input.Any<std::int32_t>();
                builder().SetFilter(filter);
                _model.SetFilter(filter);
                break;
            }
            case 5: {
                const RGBAColor color = anyColor(input);
                _adapter.ApplyAttribute(new AttributeHighlight(color));
                _model.ApplyAttribute({AttributeType::Highlight, textOf(color)});
                break;
            }
            case 6:
                colorItems(anyColor(input));
                break;
            default:
                addItem();
        }
    }

    void setTransformation(Input& input) {
        double matrix[16];
        for (double& number : matrix) {
            number = static_cast<double>(input.Byte()) - 100;
        }
        if (input.Flag()) {
            AttributeTransform::SetIdentity(matrix);
        }
        builder().SetTransformation(matrix);
        _model.ApplyAttribute({AttributeType::Transform, matrixText(matrix)});
    }

    void colorItems(const RGBAColor& color) {
        _adapter.SetColor(color);
        const auto part = [](std::uint8_t channel) { return static_cast<float>(channel / 255.0); };
        _model.SetColor(floatsText(part(color.GetRed()), part(color.GetGreen()),
                                   part(color.GetBlue()), part(color.GetAlpha())));
    }

    void addItem() {
        const std::uint64_t id = ++_items;
        Check(builder().AddGeometry(support::newItem(id, &_destroyed)), "AddGeometry");
        _model.AddItem({id, std::to_string(id), floatsText(0, 0, 0, 255)});
    }

    // ---- edits

    /// A path to a node that is there, mostly.
    ModelPath anyPath(Input& input) {
        ModelPath path;
        if (input.Below(16) == 0) {
            path.origin = static_cast<int>(input.Below(3));
        }
        const int node = static_cast<int>(input.Below(256)) % _graph.Count();
        if (input.Below(16) == 0) {
            path.values = {1};
        } else if (input.Below(4) != 0 && _model.graph[node].isAlive) {
            path.values = _model.graph.Path(node);
            if (input.Below(4) == 0) {
                path.values.push_back(anyId(input));
            }
        } else {
            for (unsigned left = input.Below(6); left > 0; --left) {
                path.values.push_back(path.values.empty() ? 1 : anyId(input));
            }
        }
        return path;
    }

    static RenderId real(const ModelPath& path) {
        return RenderId(path.values, static_cast<OriginEnum>(path.origin));
    }

    /// Takes over what an edit makes of the model, unless an open node would die of it.
    template <typename Edit>
    bool modelEdit(Edit edit) {
        Fuzz::AdapterModel trial = _model;
        edit(trial);
        if (trial.OpenNodeDied()) {
            return false;
        }
        _model = trial;
        return true;
    }

    void edit(Input& input) {
        const ModelPath path = anyPath(input);
        switch (input.Below(8)) {
            case 0:
                deleteNode(path, input.Flag());
                break;
            case 1:
                deleteChild(anyId(input));
                break;
            case 2:
                clear(path);
                break;
            case 3:
                clearByBuilder(path);
                break;
            case 4:
            case 5:
                addReference(path, input.Flag());
                break;
            case 6:
                moveGeometry(path);
                break;
            default:
                copyFromNode(path, input.Flag());
        }
        _graph.ForgetDeadParents();
    }

    void deleteNode(const ModelPath& path, bool byBuilder) {
        bool deleted = false;
        if (!modelEdit([&](auto& model) { deleted = model.DeleteNode(path.values); })) {
            return;
        }
        if (byBuilder) {
            Check(!builder().Delete(real(path)), "Delete answers false");
        } else {
            Check(_adapter.DeleteNode(real(path)) == deleted, "DeleteNode of a path");
        }
    }

    void deleteChild(std::uint64_t id) {
        bool deleted = false;
        if (modelEdit([&](auto& model) { deleted = model.DeleteNode(id); })) {
            Check(_adapter.DeleteNode(id) == deleted, "DeleteNode of an id");
        }
    }

    void clear(const ModelPath& path) {
        if (modelEdit([&](auto& model) { model.Clear(path); })) {
            _adapter.Clear(real(path));
        }
    }

    void clearByBuilder(const ModelPath& path) {
        const bool isScene = path.values.size() == 1;
        const auto clear = [&](auto& model) {
            isScene ? model.ClearScene(path.values) : model.Clear(path);
        };
        if (modelEdit(clear)) {
            builder().Clear(real(path));
            state().hasContent = false;
            state().containers.clear();
        }
    }

    void addReference(const ModelPath& path, bool byBuilder) {
        if (_model.MakesCycle(path.values)) {
            return;
        }
        const bool added = _model.AddReference(path.values);
        if (byBuilder) {
            Check(!builder().AddReference(real(path)), "the builder's AddReference answers false");
            if (added) {
                _model.CloseNode();
            }
        } else {
            Check(_adapter.AddReference(real(path)) == added, "AddReference");
        }
    }

    void moveGeometry(const ModelPath& path) {
        const int source = _model.graph.Find(0, path.values);
        if (source >= 0) {
            _model.CopyNodeAttributesFrom(source);
            _model.TransferNodeGeometryFrom(source);
        }
        Check(builder().MoveGeometryFrom(real(path)) == (source >= 0), "MoveGeometryFrom");
    }

    void copyFromNode(const ModelPath& path, bool attributes) {
        const int source = _model.graph.Find(0, path.values);
        if (source < 0) {
            return;
        }
        if (attributes) {
            _model.CopyNodeAttributesFrom(source);
            _adapter.CopyNodeAttributesFrom(*_graph[source]);
        } else {
            _model.TransferNodeGeometryFrom(source);
            _adapter.TransferNodeGeometryFrom(*_graph[source]);
        }
    }

    /// The stack of open nodes by the adapter's own operations.
    void open(Input& input) {
        switch (input.Below(6)) {
            case 0: {
                const ModelPath path = anyPath(input);
                Check(_adapter.OpenNodes(real(path)) == _model.OpenNodes(path.values), "OpenNodes");
                break;
            }
            case 1:
                _adapter.OpenTopNode();
                _model.OpenTopNode();
                break;
            case 2:
                _adapter.CloseAllNodes();
                _model.CloseAllNodes();
                break;
            case 3:
                _adapter.CloseNodeAndOptimize();
                _model.CloseNode();
                break;
            default:
                createLeaf(input);
        }
    }

    void createLeaf(Input& input) {
        const std::uint64_t id = anyId(input);
        const int top = _model.Top();
        const bool isTaken = top >= 0 && _model.graph.Child(top, id) >= 0;
        if (isTaken || _graph.Count() >= kMostNodes) {
            return;
        }
        const std::wstring name = input.Text(4);
        Check(_adapter.CreateGeoNode(id, name) == _model.CreateNode(id, name, false),
              "CreateGeoNode");
        adopt();
    }

    // ---- questions

    void ask(Input& input) {
        switch (input.Below(5)) {
            case 0:
                find(anyPath(input));
                break;
            case 1:
                convert(input);
                break;
            case 2:
                compose(input);
                break;
            case 3:
                checkCurrentRenderId();
                break;
            default:
                checkDump();
        }
    }

    void find(const ModelPath& path) {
        const int node = _model.graph.Find(0, path.values);
        Check(_adapter.GetNode(real(path)) == (node < 0 ? nullptr : _graph[node]), "GetNode");
    }

    static void checkEntity(const EntityId& id, const ModelEntity& expected, const char* what) {
        Check(id.OwnerID == expected.owner && id.Type == expected.type && id.ID == expected.number,
              what);
    }

    void convert(Input& input) {
        const ModelPath path = anyPath(input);
        EntityId out(1, FaceType, 2);
        ModelEntity expected{1, 10002, 2};
        _adapter.Convert(real(path), out);
        _model.Convert(path.values, expected);
        checkEntity(out, expected, "Convert");
        builder().ExtractEntityId(real(path), out);
        checkEntity(out, state().Extract(path.values), "ExtractEntityId");
    }

    void compose(Input& input) {
        const ModelEntity entity{anyId(input), kTypes[input.Below(8)], anyId(input)};
        const EntityId id(entity.owner, static_cast<EntityType>(entity.type), entity.number);
        const RGBAColor color;
        RenderId out;
        builder().BuildRenderId(out, id, color, color);
        Check(out == real({state().Compose(entity), 1}), "BuildRenderId");
        builder().BuildRenderId(out, FaceType, id, color, color);
        Check(out == real({state().Compose(10002, entity), 1}), "BuildRenderId with a type");
    }

    void checkCurrentRenderId() {
        RenderId out({5}, ViewTree);
        const bool isOpen = _model.Top() >= 0;
        Check(builder().GetCurrentRenderId(out) == isOpen, "answer of GetCurrentRenderId");
        const ModelPath path =
            isOpen ? ModelPath{_model.graph.Path(_model.Top()), 1} : ModelPath{{5}, 2};
        Check(out == real(path), "GetCurrentRenderId");
    }

    void checkDump() {
        if (_model.graph.Steps(0, 2000) >= 2000) {
            return;
        }
        std::string expected = "before\n";
        std::string text = expected;
        _model.graph.Dump(0, expected);
        _adapter.GetSceneStructure(text, false);
        if (text != expected) {
            Fuzz::Fail("dump\n" + text + "expected\n" + expected);
        }
    }

    void checkAll() {
        _adapter.log.clear();
        _adapter.applied.clear();
        GeoNode* const open = _model.Top() < 0 ? nullptr : _graph[_model.Top()];
        Check(_adapter.GetCurrentOpenNode() == open, "current open node");
        Check(_adapter._openNodes.size() == _model.open.size(), "number of open nodes");
        for (std::size_t place = 0; place < _builders.size(); ++place) {
            const ModelBuilder& expected = _model.builders[place];
            Check(_builders[place]->HasContent() == expected.hasContent, "HasContent");
            Check(_builders[place]->GetContainerRenderId() == real({expected.ContainerPath(), 1}),
                  "GetContainerRenderId");
        }
        _graph.CheckAll();
        checkDeaths();
        if (_debugText.Text() != _model.debugText) {
            Fuzz::Fail("debug text\n" + _debugText.Text() + "expected\n" + _model.debugText);
        }
    }

    void checkDeaths() {
        std::vector<std::string> deaths;
        for (const std::uint64_t id : _destroyed) {
            deaths.push_back(std::to_string(id));
        }
        Check(deaths == _model.graph.deaths, "items destroyed");
    }

    support::CapturedDebugText _debugText;
    std::vector<std::uint64_t> _destroyed;
    std::uint64_t _items = 0;
    Adapter _adapter;
    SceneBuilderFactory _factory;
    std::vector<SceneBuilder*> _builders;
    std::size_t _current = 0;
    Fuzz::AdapterModel _model;
    Fuzz::Graph _graph;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    SceneProtocol protocol;
    protocol.Run(input);
    return 0;
}
