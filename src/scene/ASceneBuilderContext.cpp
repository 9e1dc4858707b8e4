#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/scene/ASceneBuilderContext.h>

namespace KesVizCore {

ASceneBuilderContext::ASceneBuilderContext(SceneBuilder* builder) : _builder(builder), _ok(false) {}

ASceneBuilderContext::~ASceneBuilderContext() = default;

ConstructionContext::ConstructionContext(SceneBuilder* builder) : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = builder->ConstructionBegin();
    }
}

ConstructionContext::~ConstructionContext() {
    if (hasLevelToEnd()) {
        _builder->ConstructionEnd();
    }
}

SceneContext::SceneContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name)
    : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = builder->SceneBegin(id, name);
    }
}

SceneContext::~SceneContext() {
    if (hasLevelToEnd()) {
        _builder->SceneEnd();
    }
}

SceneLevelContext::SceneLevelContext(SceneBuilder* builder, const std::uint64_t& id,
                                     const std::wstring& name)
    : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = builder->SceneLevelBegin(id, name);
    }
}

SceneLevelContext::~SceneLevelContext() {
    if (hasLevelToEnd()) {
        _builder->SceneLevelEnd();
    }
}

ContainerContext::ContainerContext(SceneBuilder* builder, const std::uint64_t& id,
                                   const std::wstring& name,
                                   const SceneBuilder::ContainerType& type)
    : ASceneBuilderContext(builder) {
    _ok = builder == nullptr || builder->ContainerBegin(id, name, type);
}

ContainerContext::~ContainerContext() {
    if (hasLevelToEnd()) {
        _builder->ContainerEnd();
    }
}

BodyContext::BodyContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name)
    : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = builder->BodyBegin(id, name);
    }
}

BodyContext::~BodyContext() {
    if (hasLevelToEnd()) {
        _builder->BodyEnd();
    }
}

EntityTypeContext::EntityTypeContext(SceneBuilder* builder, const EntityType& type,
                                     const std::wstring& name)
    : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = builder->EntityTypeBegin(type, name);
    }
}

EntityTypeContext::~EntityTypeContext() {
    if (hasLevelToEnd()) {
        _builder->EntityTypeEnd();
    }
}

EntityContext::EntityContext(SceneBuilder* builder, const std::uint64_t& id,
                             const std::wstring& name, const bool& useColor, const RGBAColor& color)
    : ASceneBuilderContext(builder) {
    if (builder != nullptr) {
        _ok = useColor ? builder->EntityBegin(id, name, color) : builder->EntityBegin(id, name);
    }
}

EntityContext::~EntityContext() {
    if (hasLevelToEnd()) {
        _builder->EntityEnd();
    }
}

}  // namespace KesVizCore
