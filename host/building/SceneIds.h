#pragma once

/// @file
/// Render ids and entity ids as people write them.

#include "document/Document.h"

#include <KesVizCore/core/EntityId.h>
#include <KesVizCore/core/RenderId.h>

#include <cstdint>
#include <optional>
#include <string>

namespace kesview {

namespace viz = KesVizCore;

/// "1/12/44"
std::string renderIdText(const viz::RenderId& id);
/// A path in the 3D view; none where @p text is not numbers with slashes between them.
std::optional<viz::RenderId> parseRenderId(const std::string& text);

/// "face:12", "edge:7", "body:5", "instance:4", "product:3", "annotation:9", "view:2". An instance
/// is a part or assembly with an owner, its product; a product has none.
std::string entityText(const viz::EntityId& entity);

/// The word and number of an entity's text.
struct EntityName {
    enum class Kind : std::int32_t { Instance, Product, Body, Face, Edge, Annotation };
    Kind kind = Kind::Face;
    Id id = 0;
};

/// None where @p text names none of the kinds that stand in a scene.
std::optional<EntityName> parseEntityText(const std::string& text);

}  // namespace kesview
