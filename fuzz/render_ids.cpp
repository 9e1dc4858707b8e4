/// @file
/// Entity ids, render ids, their composition by a scene builder and the signed ids of renderers,
/// each beside a plain container that does the same.

#include "BuilderModel.h"
#include "Input.h"
#include "support/EmptyHost.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <limits>
#include <map>
#include <new>
#include <set>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace {

using namespace KesVizCore;
using Fuzz::Check;
using Fuzz::Input;
using Fuzz::typeOfNumber;
using Fuzz::Values;

/// Small numbers that meet again, limits, and any.
std::uint64_t anyId(Input& input) {
    static const std::uint64_t limits[] = {0, 0x7FFFFFFFFFFFFFFFU, 0x8000000000000000U,
                                           0x8000000000000001U, 0xFFFFFFFFFFFFFFFFU};
    switch (input.Below(4)) {
        case 0:
            return limits[input.Below(5)];
        case 1:
            return 0x8000000000000000U + input.Below(16);
        case 2:
            return input.Below(16);
        default:
            return input.Any<std::uint64_t>();
    }
}

// ---- Entity ids

const std::set<std::int64_t> annotationTypes = {10005, 10010, 10012, 10100, 10101,
                                                10102, 10103, 10104, 10105, 11000};
EntityType anyType(Input& input) {
    if (input.Below(8) == 0) {
        return input.Flag() ? InvalidType : static_cast<EntityType>(input.Any<std::int32_t>());
    }
    return static_cast<EntityType>(*std::next(Fuzz::entityTypes().begin(), input.Below(23)));
}

void checkEntity(const EntityId& id, std::uint64_t owner, std::int64_t type, std::uint64_t number) {
    Check(id.ID == number && id.OwnerID == owner && id.Type == type, "fields of an entity id");
    Check(id.IsEmpty() == (owner == 0 && number == 0), "IsEmpty");
    Check(id.IsVertex() == (type == 10000) && id.IsEdge() == (type == 10001) &&
              id.IsFace() == (type == 10002) && id.IsBody() == (type == 10003) &&
              id.IsCloud() == (type == 10004) && id.IsGroup() == (type == 10007) &&
              id.IsView() == (type == 10010) && id.IsCapture() == (type == 10012) &&
              id.IsConstruction() == (type == 20000) && id.IsPart() == (type == 40000) &&
              id.IsOther() == (type == 99999) &&
              id.IsAnnotation() == (annotationTypes.count(type) == 1),
          "predicates of an entity id");
    const bool hasBody = type >= 10000 && type <= 10002;
    const EntityId parent = id.GetParentEntity();
    Check(parent.Type == (hasBody ? 10003 : -1) && parent.ID == (hasBody ? owner : 0) &&
              parent.OwnerID == 0,
          "GetParentEntity");
    Check(id.ToString() == "EntityId: EntityType = " + std::to_string(type) + " ID = " +
                               std::to_string(number) + " OwnerID = " + std::to_string(owner),
          "EntityId::ToString");
}

EntityId anyEntity(Input& input) {
    const std::uint64_t owner = anyId(input);
    const EntityType type = anyType(input);
    const std::uint64_t number = anyId(input);
    const EntityId id(owner, type, number);
    checkEntity(id, owner, type, number);
    return id;
}

class EntityMaps {
public:
    void Insert(Input& input) {
        const EntityId id = anyEntity(input);
        for (const auto& [key, value] : _map) {
            const bool equal = key.ID == id.ID && key.OwnerID == id.OwnerID && key.Type == id.Type;
            Check((key == id) == equal && (key != id) == !equal, "== of entity ids");
        }
        const std::size_t value = _map.size();
        const bool inserted = _map.emplace(id, value).second;
        Check(inserted == _model.emplace(std::make_pair(id.ID, id.OwnerID), value).second,
              "an entity id as the key of a map");
        auto expected = _model.begin();
        for (const auto& [key, number] : _map) {
            Check(key.ID == expected->first.first && key.OwnerID == expected->first.second &&
                      number == expected->second,
                  "order of entity ids");
            ++expected;
        }
    }

private:
    std::map<EntityId, std::size_t> _map;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::size_t> _model;
};

// ---- Render ids

struct ModelRenderId {
    std::int32_t origin = 0;
    Values values;

    bool operator==(const ModelRenderId& other) const {
        return origin == other.origin && values == other.values;
    }
    std::string Text() const {
        std::string text = "[ ";
        for (std::size_t place = 0; place < values.size(); ++place) {
            text += (place == 0 ? "" : ", ") + std::to_string(values[place]);
        }
        return text + (origin == 1 ? " View3D ]" : origin == 2 ? " ViewTree ]" : " Unknown ]");
    }
};

Values valuesOf(const RenderId& id) {
    Values values;
    for (int place = 0; place < id.Length(); ++place) {
        values.push_back(id[place]);
    }
    return values;
}

void checkRenderId(const RenderId& id, const ModelRenderId& model) {
    const Values values = valuesOf(id);
    if (id.GetOrigin() != model.origin || values != model.values ||
        id.IsEmpty() != model.values.empty() || id.ToString() != model.Text()) {
        Fuzz::Fail("render id " + id.ToString() + ", expected " + model.Text());
    }
}

/// Some render ids, each beside its model.
class RenderIds {
public:
    void Change(Input& input) {
        RenderId& id = _ids[input.Below(kCount)];
        ModelRenderId& model = _models[static_cast<std::size_t>(&id - _ids)];
        const std::size_t other = input.Below(kCount);
        switch (input.Below(10)) {
            case 0:
                model.values.push_back(anyId(input));
                id.AddValue(model.values.back());
                break;
            case 1:
                setValue(input, id, model);
                break;
            case 2:
                setLength(input, id, model);
                break;
            case 3:
                id.Clear();
                model = ModelRenderId();
                break;
            case 4:
                model.origin = static_cast<std::int32_t>(input.Below(4)) - 1;
                id.SetOrigin(static_cast<OriginEnum>(model.origin));
                break;
            case 5:
                id = _ids[other];
                model = ModelRenderId(_models[other]);
                break;
            case 6:
                move(id, model, other);
                break;
            case 7:
                create(input, id, model);
                break;
            case 8:
                element(input, id, model);
                break;
            default:
                arrays(model);
        }
        checkRenderId(id, model);
        Check((id == _ids[other]) == (model == _models[other]) &&
                  (id != _ids[other]) == !(model == _models[other]),
              "== of render ids");
        count(id, model);
    }

private:
    static constexpr unsigned kCount = 4;

    static void setValue(Input& input, RenderId& id, ModelRenderId& model) {
        const int index = static_cast<int>(input.Below(32)) - 2;
        const std::uint64_t value = anyId(input);
        bool refused = false;
        try {
            id.SetValue(index, value);
        } catch (const std::out_of_range&) {
            refused = true;
        }
        Check(refused == (index < 0), "SetValue refuses negative indices and no others");
        if (refused) {
            return;
        }
        const auto place = static_cast<std::size_t>(index);
        if (model.values.size() <= place) {
            model.values.resize(place + 1);
        }
        model.values[place] = value;
    }

    static void setLength(Input& input, RenderId& id, ModelRenderId& model) {
        const int length = static_cast<int>(input.Below(32)) - 2;
        bool refused = false;
        try {
            id.SetLength(length);
        } catch (const std::length_error&) {
            refused = true;
        }
        Check(refused == (length < 0), "SetLength refuses negative lengths and no others");
        if (!refused) {
            model.values.resize(static_cast<std::size_t>(length));
        }
    }

    /// Goes by another object; one that lost its ids gets them back by assignment.
    void move(RenderId& id, ModelRenderId& model, std::size_t other) {
        RenderId moved(std::move(_ids[other]));
        checkRenderId(moved, _models[other]);
        _ids[other] = moved;
        id = std::move(moved);
        model = ModelRenderId(_models[other]);
    }

    static void create(Input& input, RenderId& id, ModelRenderId& model) {
        const auto origin = static_cast<OriginEnum>(input.Below(3));
        RenderId* created = nullptr;
        switch (input.Below(3)) {
            case 0:
                created = RenderId::CreateRenderId();
                model = ModelRenderId();
                break;
            case 1:
                created = RenderId::CreateRenderId(model.values, origin);
                model.origin = origin;
                break;
            default:
                created = RenderId::CreateRenderId(model.values.data(),
                                                   static_cast<int>(model.values.size()), origin);
                model.origin = origin;
        }
        Check(created != nullptr, "CreateRenderId answers an object");
        checkRenderId(*created, model);
        id = RenderId(*created);
        RenderId::DeleteRenderId(created);
        Check(created == nullptr, "DeleteRenderId nulls the pointer");
        RenderId::DeleteRenderId(created);
    }

    static void element(Input& input, const RenderId& id, ModelRenderId& model) {
        if (model.values.empty()) {
            return;
        }
        const std::size_t place = input.Below(256) % model.values.size();
        id[static_cast<int>(place)] = model.values[place] = anyId(input);
    }

    static void arrays(const ModelRenderId& model) {
        auto* ids = new RenderId[3];
        ids[2] = RenderId(model.values, static_cast<OriginEnum>(model.origin));
        RenderId::DeleteRenderIdArr(ids);
        Check(ids == nullptr, "DeleteRenderIdArr nulls the pointer");
        RenderId::DeleteRenderIdArr(ids);
    }

    /// How often each id was met, by hash and by text.
    void count(const RenderId& id, const ModelRenderId& model) {
        const int times = ++_times[id];
        const auto text = std::make_pair(model.origin, model.values);
        Check(times == ++_modelTimes[text], "a render id as the key of a hash map");
    }

    RenderId _ids[kCount];
    ModelRenderId _models[kCount];
    std::unordered_map<RenderId, int> _times;
    std::map<std::pair<std::int32_t, Values>, int> _modelTimes;
};

// ---- Composition

class Composition {
public:
    Composition() {
        _adapter.refusesToOpen = _adapter.refusesToCreate = {13};
        _builder = _factory.MakeSceneBuilder(&_adapter);
    }
    ~Composition() { _factory.DeleteSceneBuilder(_builder); }
    Composition(const Composition&) = delete;
    Composition& operator=(const Composition&) = delete;

    void Change(Input& input) {
        _adapter.log.clear();
        switch (input.Below(8)) {
            case 0:
                Check(_builder->ConstructionBegin(), "ConstructionBegin");
                ++_open;
                _model.scenes.clear();
                break;
            case 1:
                _builder->ConstructionEnd();
                _open = 0;
                break;
            case 2:
                beginScene(anyId(input));
                break;
            case 3:
                beginContainer(anyId(input), static_cast<std::int32_t>(input.Below(3)));
                break;
            case 4:
                _builder->ContainerEnd();
                _open -= _open > 0 ? 1 : 0;
                break;
            case 5:
                clear(input);
                break;
            case 6:
                build(input);
                break;
            default:
                extract(input);
        }
        checkRenderId(_builder->GetContainerRenderId(), {1, _model.ContainerPath()});
    }

private:
    /// The top id names the root wherever it is asked for; below it all is made but 13.
    bool begins(std::uint64_t id) {
        const bool begun = id == 1 || (_open > 0 && id != 13);
        _open += begun ? 1 : 0;
        return begun;
    }

    void beginScene(std::uint64_t id) {
        const bool begun = begins(id);
        Check(_builder->SceneBegin(id, L"scene") == begun, "SceneBegin");
        if (begun) {
            _model.scenes.push_back(id);
        }
    }

    void beginContainer(std::uint64_t id, std::int32_t type) {
        const bool begun = begins(id);
        const auto kind = static_cast<SceneBuilder::ContainerType>(type);
        Check(_builder->ContainerBegin(id, L"", kind) == begun, "ContainerBegin");
        if (begun && type == 0) {
            _model.containers.push_back(id);
        }
    }

    /// Of a path that no node has: the builder forgets its containers all the same.
    void clear(Input& input) {
        _builder->Clear(RenderId({77, 78, input.Below(9)}, View3D));
        _model.containers.clear();
        Check(!_builder->HasContent(), "Clear takes the content flag back");
    }

    void build(Input& input) {
        const EntityId entity = anyEntity(input);
        const Fuzz::ModelEntity expected{entity.OwnerID, entity.Type, entity.ID};
        const RGBAColor red = RGBAColor::Red();
        RenderId built({9, 9, 9}, ViewTree);
        if (input.Flag()) {
            const EntityType first = anyType(input);
            _builder->BuildRenderId(built, first, entity, red, red);
            checkRenderId(built, {1, _model.Compose(first, expected)});
        } else {
            _builder->BuildRenderId(built, entity, red, red);
            checkRenderId(built, {1, _model.Compose(expected)});
        }
        extract(built);
    }

    void extract(Input& input) {
        RenderId id;
        id.SetOrigin(View3D);
        for (unsigned left = input.Below(12); left > 0; --left) {
            id.AddValue(input.Flag() ? anyId(input)
                                     : static_cast<std::uint64_t>(std::int64_t{anyType(input)}));
        }
        extract(id);
    }

    void extract(const RenderId& id) {
        EntityId extracted(5, FaceType, 6);
        _builder->ExtractEntityId(id, extracted);
        const Fuzz::ModelEntity expected = _model.Extract(valuesOf(id));
        checkEntity(extracted, expected.owner, expected.type, expected.number);
    }

    support::RecordingAdapter _adapter;
    SceneBuilderFactory _factory;
    SceneBuilder* _builder = nullptr;
    int _open = 0;
    Fuzz::ModelBuilder _model;
};

// ---- Signed ids

class Renderer : public support::EmptyRenderer {
public:
    using ARenderer::addSignedId;
};

class SignedIds {
public:
    ~SignedIds() { forget(); }

    void Change(Input& input) {
        const std::uint64_t id = anyId(input);
        switch (input.Below(16)) {
            case 0:
                forget();
                break;
            case 1:
                _model[id] = anyId(input);
                Renderer::addSignedId(id, _model[id]);
                break;
            default:
                ask(id);
        }
    }

private:
    void forget() {
        const Renderer renderer;
        _model.clear();
    }

    void ask(std::uint64_t id) {
        std::uint64_t expected = 0;
        std::string error;
        if (!find(id, expected)) {
            const std::string number = std::to_string(id);
            error =
                "ARenderer::getLegalSignedId() could not compute a positive, unique id. "
                "Input was " +
                number + ":" + number;
        }
        std::string thrown;
        std::uint64_t answered = 0;
        try {
            answered = ARenderer::getSignedId(id);
        } catch (const std::runtime_error& failure) {
            thrown = failure.what();
        }
        if (answered != expected || thrown != error) {
            Fuzz::Fail("signed id of " + std::to_string(id) + ": " + std::to_string(answered) +
                       thrown + ", expected " + std::to_string(expected) + error);
        }
    }

    bool find(std::uint64_t id, std::uint64_t& found) {
        constexpr std::uint64_t highest = 0x7FFFFFFFFFFFFFFFU;
        const auto known = _model.find(id);
        if (known != _model.end()) {
            found = known->second;
            return true;
        }
        found = id;
        if (id > highest) {
            if (id == highest + 1) {
                found = 0;
                return false;
            }
            found = id + highest;  // wraps around
            if (taken(found)) {
                for (found = highest; taken(found);) {
                    --found;
                }
            }
        }
        _model[id] = found;
        return true;
    }

    bool taken(std::uint64_t value) const {
        return std::any_of(_model.begin(), _model.end(),
                           [value](const auto& pair) { return pair.second == value; });
    }

    std::map<std::uint64_t, std::uint64_t> _model;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    EntityMaps entities;
    RenderIds renderIds;
    Composition composition;
    SignedIds signedIds;
    while (!input.IsAtEnd()) {
        switch (input.Below(4)) {
            case 0:
                entities.Insert(input);
                break;
            case 1:
                renderIds.Change(input);
                break;
            case 2:
                composition.Change(input);
                break;
            default:
                signedIds.Change(input);
        }
    }
    const std::uint64_t number = size >= 8 ? Input(data, size).Any<std::uint64_t>() : size;
    Check(EntityId::GetTypeFromInt(number) == typeOfNumber(number), "GetTypeFromInt");
    return 0;
}
