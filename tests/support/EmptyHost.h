#pragma once

/// @file
/// A host's classes that complete what they must, and do nothing: bases for those of one test.

#include <KesVizCore/graph/AGeometryItemFactory.h>
#include <KesVizCore/scene/ARenderer.h>

#include <cstdint>
#include <string>

namespace KesVizCore::support {

/// A maker of items that makes none.
class EmptyItemFactory : public AGeometryItemFactory {
public:
    virtual ~EmptyItemFactory() = default;
    AGeometryItem* CreateTriangleSet(const std::uint64_t&, float*, float*, int*, int, int, int,
                                     TriangleType) override {
        return nullptr;
    }
    AGeometryItem* CreatePolyline(const std::uint64_t&, float*, int) override { return nullptr; }
    AGeometryItem* CreateFilledPolyline(const std::uint64_t&, float*, int) override {
        return nullptr;
    }
    AGeometryItem* CreatePointCloud(const std::uint64_t&, const int&, float*) override {
        return nullptr;
    }
    AGeometryItem* CreateVertex(const std::uint64_t&, float* const) override { return nullptr; }
    AGeometryItem* CreateText(const std::uint64_t&, const std::wstring&, const std::wstring&,
                              float*, const FontAttr&, const float&) override {
        return nullptr;
    }
};

/// A renderer that describes nothing.
class EmptyRenderer : public ARenderer {
public:
    explicit EmptyRenderer(SceneBuilder* builder = nullptr, RenderId* renderId = nullptr)
        : ARenderer(builder, renderId) {}

    std::wstring GetName() const override { return L"Renderer"; }
    bool Render() override { return false; }
    bool Update() override { return false; }
    void Clear() override {}
    bool IsEmpty() const override { return true; }
    bool Deactivate(RenderId&) override { return false; }
    bool Show(const RenderId&) override { return false; }
    bool Hide(const RenderId&) override { return false; }
    bool GetEntityId(const RenderId&, EntityId&) const override { return false; }
    bool GetRenderId(const EntityId&, RenderId&) const override { return false; }
};

}  // namespace KesVizCore::support
