/// @file
/// Which of a container's meshes was picked: the last, so that every one is looked at. The baseline
/// is a loop over elements with the same fields.

#include "support/Bench.h"
#include "support/Loaders.h"
#include "support/OurScene.h"

#include <algorithm>

namespace bench {
namespace {

viz::RenderId pathOfMesh(std::int64_t number) {
    return viz::RenderId({sceneId, containerId, firstBodyId + static_cast<std::uint64_t>(number)},
                         viz::View3D);
}

viz::EntityId entityOfMesh(std::int64_t number) {
    return viz::EntityId(0, viz::BodyType, firstBodyId + static_cast<std::uint64_t>(number));
}

/// The path of a face of the last mesh.
viz::RenderId picked(std::int64_t meshes) {
    viz::RenderId path = pathOfMesh(meshes - 1);
    path.AddValue(viz::FaceType);
    path.AddValue(firstEntityId);
    return path;
}

/// An adapter that hits the same wherever the ray goes.
class HittingAdapter final : public Adapter {
public:
    explicit HittingAdapter(viz::RenderId hit) : _hit(std::move(hit)) {}

    bool PickVisual(const viz::Ray& /*ray*/, viz::RenderId& id) override {
        id = _hit;
        return true;
    }

private:
    viz::RenderId _hit;
};

struct Ours {
    explicit Ours(std::int64_t size) {
        for (std::int64_t number = 0; number < size; ++number) {
            auto mesh = load<viz::AVizMeshLoader, viz::VizMesh>();
            mesh->SetEntityID(entityOfMesh(number));
            mesh->Set3DRenderID(pathOfMesh(number));
            container->AddMesh(mesh.release());
        }
    }

    std::unique_ptr<viz::VizContainer> container = std::make_unique<viz::VizContainer>(1);
};

void ours(benchmark::State& state, std::int64_t size) {
    viz::VizContainer& container = *once<Ours>(size).container;
    HittingAdapter adapter(picked(size));
    const viz::Ray ray;
    viz::VizElement* found = nullptr;
    timeRounds(state, [&] { container.PickVisual(&adapter, ray, found); });
    if (found != container.GetMeshes().back()) {
        state.SkipWithError("another mesh was found");
    }
    countItems(state, size);
}

struct PlainElement {
    std::wstring visualId;
    viz::RGBAColor color;
    bool hidden = false;
    std::uint64_t id = 0;
    viz::EntityId entity;
    int origin = viz::View3D;
    std::vector<std::uint64_t> path;
    std::vector<std::uint64_t> treePath;
    std::vector<void*> faces;
    std::vector<void*> edges;
    std::wstring mechanicalId;
};

std::vector<std::uint64_t> valuesOf(const viz::RenderId& id) {
    std::vector<std::uint64_t> values;
    for (int place = 0; place < id.Length(); ++place) {
        values.push_back(id[place]);
    }
    return values;
}

struct Plain {
    explicit Plain(std::int64_t size) {
        for (std::int64_t number = 0; number < size; ++number) {
            elements.push_back(std::make_unique<PlainElement>());
            elements.back()->entity = entityOfMesh(number);
            elements.back()->path = valuesOf(pathOfMesh(number));
        }
    }

    /// The first that stands for an entity and whose path leads to @p path.
    const PlainElement* Find(const std::vector<std::uint64_t>& path, int origin) const {
        for (const auto& element : elements) {
            const auto& own = element->path;
            if (element->entity.Type != viz::InvalidType && element->origin == origin &&
                !own.empty() && own.size() <= path.size() &&
                std::equal(own.begin(), own.end(), path.begin())) {
                return element.get();
            }
        }
        return nullptr;
    }

    std::vector<std::unique_ptr<PlainElement>> elements;
};

void plain(benchmark::State& state, std::int64_t size) {
    const auto& subject = once<Plain>(size);
    const std::vector<std::uint64_t> path = valuesOf(picked(size));
    const PlainElement* found = nullptr;
    timeRounds(state, [&] {
        found = subject.Find(path, viz::View3D);
        benchmark::DoNotOptimize(found);
    });
    if (found != subject.elements.back().get()) {
        state.SkipWithError("another element was found");
    }
    countItems(state, size);
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({100'000})) {
        add("container pick/ours", size, ours);
        add("container pick/plain loop", size, plain);
    }
});

}  // namespace
}  // namespace bench
