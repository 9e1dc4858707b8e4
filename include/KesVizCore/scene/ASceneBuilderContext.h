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
/// IsOK() is false where the Begin failed; the destructor then does not call the End. What the
/// Begin throws passes through, with nothing to end. An End that throws ends the process, as its
/// caller is a destructor.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API ASceneBuilderContext {
public:
    /// The copy ends the level once more.
    ASceneBuilderContext(const ASceneBuilderContext& other) = default;
    /// Ends the level of the other once more in place of its own.
    ASceneBuilderContext& operator=(const ASceneBuilderContext& other) = default;
    virtual ~ASceneBuilderContext();

    /// Whether the level was begun.
    bool IsOK() const { return _ok; }

protected:
    /// Begins nothing yet: IsOK() is false.
    explicit ASceneBuilderContext(SceneBuilder* builder);

    /// True where the destructor of a guard has a level to end.
    bool hasLevelToEnd() const { return _builder != nullptr && _ok; }

    SceneBuilder* _builder;  ///< null allowed; not owned
    bool _ok;                ///< set by the guard, from the answer of its Begin
};

/// Guards SceneBuilder::ConstructionBegin and ConstructionEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API ConstructionContext : public ASceneBuilderContext {
public:
    /// Calls ConstructionBegin.
    explicit ConstructionContext(SceneBuilder* builder);
    ConstructionContext(const ConstructionContext& other) = default;  ///< see the base
    /// See the base.
    ConstructionContext& operator=(const ConstructionContext& other) = default;
    ~ConstructionContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::SceneBegin and SceneEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API SceneContext : public ASceneBuilderContext {
public:
    /// Calls SceneBegin.
    SceneContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    SceneContext(const SceneContext& other) = default;  ///< see the base
    /// See the base.
    SceneContext& operator=(const SceneContext& other) = default;
    ~SceneContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::SceneLevelBegin and SceneLevelEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API SceneLevelContext : public ASceneBuilderContext {
public:
    /// Calls SceneLevelBegin.
    SceneLevelContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    SceneLevelContext(const SceneLevelContext& other) = default;  ///< see the base
    /// See the base.
    SceneLevelContext& operator=(const SceneLevelContext& other) = default;
    ~SceneLevelContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::ContainerBegin and ContainerEnd; see ASceneBuilderContext.
///
/// Unlike its siblings it answers IsOK() true on a null builder, where it does nothing.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API ContainerContext : public ASceneBuilderContext {
public:
    /// Calls ContainerBegin.
    ContainerContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name,
                     const SceneBuilder::ContainerType& type);
    ContainerContext(const ContainerContext& other) = default;  ///< see the base
    /// See the base.
    ContainerContext& operator=(const ContainerContext& other) = default;
    ~ContainerContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::BodyBegin, without a colour, and BodyEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API BodyContext : public ASceneBuilderContext {
public:
    /// Calls BodyBegin.
    BodyContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name);
    BodyContext(const BodyContext& other) = default;  ///< see the base
    /// See the base.
    BodyContext& operator=(const BodyContext& other) = default;
    ~BodyContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::EntityTypeBegin and EntityTypeEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API EntityTypeContext : public ASceneBuilderContext {
public:
    /// Calls EntityTypeBegin.
    EntityTypeContext(SceneBuilder* builder, const EntityType& type, const std::wstring& name);
    EntityTypeContext(const EntityTypeContext& other) = default;  ///< see the base
    /// See the base.
    EntityTypeContext& operator=(const EntityTypeContext& other) = default;
    ~EntityTypeContext() override;  ///< calls the End if IsOK()
};

/// Guards SceneBuilder::EntityBegin and EntityEnd; see ASceneBuilderContext.
///
/// @par Errors
/// As for ASceneBuilderContext.
///
/// @par Threads
/// Those of the builder.
class KESVIZCORE_API EntityContext : public ASceneBuilderContext {
public:
    /// Begins with @p color where @p useColor is true, without any where it is false.
    EntityContext(SceneBuilder* builder, const std::uint64_t& id, const std::wstring& name,
                  const bool& useColor, const RGBAColor& color);
    EntityContext(const EntityContext& other) = default;  ///< see the base
    /// See the base.
    EntityContext& operator=(const EntityContext& other) = default;
    ~EntityContext() override;  ///< calls the End if IsOK()
};

}  // namespace KesVizCore
