/// @file
/// A collection of annotations among as many elements: who is a member, and the render ids of
/// members, of all others and of a list of names. The measure of each is one hash set of the names.

#include "support/Bench.h"
#include "support/Loaders.h"

#include <algorithm>
#include <random>
#include <unordered_set>

namespace bench {
namespace {

class Collection final : public viz::VizPMICollection {
public:
    std::string GetElementType() const override { return "Collection"; }
};

/// @p size annotations, all of them members, in an order without a pattern.
struct Subject {
    explicit Subject(std::int64_t size) {
        for (std::int64_t number = 0; number < size; ++number) {
            const auto id = static_cast<std::uint64_t>(number);
            const viz::EntityId entity(1, viz::DimensionType, id + 1);
            annotations.push_back(load<viz::AVizPMILoader, viz::VizPMI>());
            viz::VizPMI& annotation = *annotations.back();
            names.push_back(L"Annotation " + std::to_wstring(id));
            annotation.SetVisualID(names.back());
            annotation.SetEntityID(entity);
            annotation.Set3DRenderID(viz::RenderId({1, 2, viz::DimensionType, id}, viz::View3D));
            elements.emplace(entity, &annotation);
        }
        std::shuffle(names.begin(), names.end(), std::mt19937_64(1));
        for (const std::wstring& name : names) {
            collection.AddMember(name);
        }
        collection.SetEntityMap(&elements);
    }

    std::vector<std::unique_ptr<viz::VizPMI>> annotations;
    std::vector<std::wstring> names;
    viz::VizPMICollection::EntityMap elements;
    Collection collection;
};

/// Adds up how many members or render ids @p operation finds, and checks that.
template <typename Operation>
Measure finding(double partOfAll, Operation operation) {
    return [partOfAll, operation](benchmark::State& state, std::int64_t size) {
        const auto& subject = once<Subject>(size);
        std::int64_t found = 0;
        timeRounds(state, [&] { found = operation(subject); });
        if (found != static_cast<std::int64_t>(partOfAll * static_cast<double>(size))) {
            state.SkipWithError("found another number than there are");
        }
        countItems(state, size);
    };
}

std::int64_t members(const Subject& subject) {
    std::int64_t found = 0;
    for (const auto& annotation : subject.annotations) {
        found += subject.collection.IsMember(*annotation) ? 1 : 0;
    }
    return found;
}

/// Has @p ask answer render ids, and releases them.
template <typename Ask>
std::int64_t renderIds(const Ask& ask) {
    viz::RenderId* ids = nullptr;
    int count = 0;
    ask(ids, count);
    viz::RenderId::DeleteRenderIdArr(ids);
    return count;
}

std::int64_t memberIds(const Subject& subject) {
    return renderIds([&](viz::RenderId*& ids, int& count) {
        subject.collection.GetMemberRenderIds(ids, count, false);
    });
}

std::int64_t nonmemberIds(const Subject& subject) {
    return renderIds([&](viz::RenderId*& ids, int& count) {
        subject.collection.GetNonmemberRenderIds(ids, count);
    });
}

std::int64_t listedIds(const Subject& subject) {
    return renderIds([&](viz::RenderId*& ids, int& count) {
        subject.collection.GetRenderIdsFromList(ids, count, subject.names);
    });
}

std::int64_t hashBuild(const Subject& subject) {
    const std::unordered_set<std::wstring> set(subject.names.begin(), subject.names.end());
    return static_cast<std::int64_t>(set.size());
}

const Registered registered([] {
    for (const std::int64_t size : sizesOr({100'000})) {
        add("PMI members/ours", size, finding(1, members));
        add("PMI member ids/ours", size, finding(1, memberIds));
        add("PMI nonmember ids/ours", size, finding(0, nonmemberIds));
        add("PMI listed ids/ours", size, finding(1, listedIds));
        add("PMI/hash build", size, finding(1, hashBuild));
    }
});

}  // namespace
}  // namespace bench
