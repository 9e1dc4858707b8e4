#include "Snippets.h"

#include <cstdint>
#include <cstdio>
#include <set>
#include <vector>

namespace snippets {

namespace {

void thereAndBack(viz::SceneBuilder* builder, viz::AView3DAdapter& adapter) {
    const viz::EntityId top(100, viz::FaceType, 11);  // the owner first, its own number last
    viz::RenderId path;
    builder->BuildRenderId(path, top, viz::RGBAColor(), viz::RGBAColor());
    viz::EntityId back;
    adapter.Convert(path, back);

    std::printf("entity  %s\n", top.ToString().c_str());
    std::printf("path    %s\n", path.ToString().c_str());
    std::printf("node    %s\n", adapter.GetNode(path)->ToString().c_str());
    std::printf("back    %s\n", back.ToString().c_str());
}

void takeApart(viz::AView3DAdapter& adapter) {
    const std::vector<std::uint64_t> ids{1, 10, 100, viz::FaceType, 11, 12, 13};
    for (int length = 2; length <= 7; ++length) {
        viz::EntityId entity;
        adapter.Convert(viz::RenderId(ids.data(), length, viz::View3D), entity);
        std::printf("%d ids  %s\n", length, entity.ToString().c_str());
    }
}

void order() {
    const viz::EntityId face(100, viz::FaceType, 5);
    const viz::EntityId edge(100, viz::EdgeType, 5);
    const std::set<viz::EntityId> both{face, edge};
    std::printf("equal: %s, in a set: %d\n", face == edge ? "yes" : "no",
                static_cast<int>(both.size()));  // equal: no, in a set: 1
}

}  // namespace

void idsAndPaths() {
    std::printf("--- ids-and-paths\n");
    Stage stage;
    describePlate(stage.builder);
    thereAndBack(stage.builder, *stage.adapter);
    takeApart(*stage.adapter);
    order();
}

}  // namespace snippets
