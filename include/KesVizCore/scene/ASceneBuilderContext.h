#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/scene/SceneBuilder.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

class RGBAColor;

/// A scope guard: its constructor begins a level of a scene, its destructor ends it.
///
/// @code
/// KesVizCore::BodyContext body(builder, 7, L"Bracket");
/// if (body.IsOK()) {
///     builder->AddGeometry(item);
/// }   // BodyEnd at the end of the scope
/// @endcode
///
/// Keep guards on the stack. They can be copied, but a copy ends the level a second time.
///
/// @par Ownership
/// The builder is not owned and must outlive the guard; null is allowed and does nothing.
///
/// @par Errors
/// IsOK() is false where the Begin failed; the destructor then does not call the End.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API ASceneBuilderContext {
public:
    ASceneBuilderContext(const ASceneBuilderContext& other) = default;
    ASceneBuilderContext& operator=(const ASceneBuilderContext& other) = default;
    virtual ~ASceneBuilderContext();

    /// Whether the level was begun.
    bool IsOK() const { return _ok; }

protected:
    explicit ASceneBuilderContext(SceneBuilder* builder);

    /// True where the destructor of a guard has a level to end.
    bool hasLevelToEnd() const { return _builder != nullptr && _ok; }

    SceneBuilder* _builder;
    bool _ok;
};

/// Guards SceneBuilder::ConstructionBegin and ConstructionEnd; see ASceneBuilderContext.
class KESVIZCORE_API ConstructionContext : public ASceneBuilderContext {
public:
    explicit ConstructionContext(SceneBuilder* builder);
    ConstructionContext(const ConstructionContext& other) = default;
    ConstructionContext& operator=(const ConstructionContext& other) = default;
    ~ConstructionContext() override;
};

/// Guards SceneBuilder::SceneBegin and SceneEnd; see ASceneBuilderContext.
class KESVIZCORE_API SceneContext : public ASceneBuilderContext {
public:
    SceneContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    SceneContext(const SceneContext& other) = default;
    SceneContext& operator=(const SceneContext& other) = default;
    ~SceneContext() override;
};

/// Guards SceneBuilder::SceneLevelBegin and SceneLevelEnd; see ASceneBuilderContext.
class KESVIZCORE_API SceneLevelContext : public ASceneBuilderContext {
public:
    SceneLevelContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    SceneLevelContext(const SceneLevelContext& other) = default;
    SceneLevelContext& operator=(const SceneLevelContext& other) = default;
    ~SceneLevelContext() override;
};

/// Guards SceneBuilder::ContainerBegin and ContainerEnd; see ASceneBuilderContext.
///
/// Unlike its siblings it answers IsOK() true on a null builder, where it does nothing.
class KESVIZCORE_API ContainerContext : public ASceneBuilderContext {
public:
    ContainerContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name,
                     const SceneBuilder::ContainerType& type);
    ContainerContext(const ContainerContext& other) = default;
    ContainerContext& operator=(const ContainerContext& other) = default;
    ~ContainerContext() override;
};

/// Guards SceneBuilder::BodyBegin, without a colour, and BodyEnd; see ASceneBuilderContext.
class KESVIZCORE_API BodyContext : public ASceneBuilderContext {
public:
    BodyContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    BodyContext(const BodyContext& other) = default;
    BodyContext& operator=(const BodyContext& other) = default;
    ~BodyContext() override;
};

/// Guards SceneBuilder::EntityTypeBegin and EntityTypeEnd; see ASceneBuilderContext.
class KESVIZCORE_API EntityTypeContext : public ASceneBuilderContext {
public:
    EntityTypeContext(SceneBuilder* builder, const EntityType& type, const std::wstring& name);
    EntityTypeContext(const EntityTypeContext& other) = default;
    EntityTypeContext& operator=(const EntityTypeContext& other) = default;
    ~EntityTypeContext() override;
};

/// Guards SceneBuilder::EntityBegin and EntityEnd; see ASceneBuilderContext.
class KESVIZCORE_API EntityContext : public ASceneBuilderContext {
public:
    /// Begins with @p color where @p useColor is true, without any where it is false.
    EntityContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name,
                  const bool& useColor, const RGBAColor& color);
    EntityContext(const EntityContext& other) = default;
    EntityContext& operator=(const EntityContext& other) = default;
    ~EntityContext() override;
};

}  // namespace KesVizCore
