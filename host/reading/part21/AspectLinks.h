#pragma once

/// @file
/// What geometry a shape aspect of an exchange file stands for.

#include "reading/part21/ExchangeFile.h"

#include <set>
#include <unordered_map>
#include <vector>

namespace kesview {

/// Follows aspects to their geometry, down composite and derived aspects, and up from a datum to
/// its features.
class AspectLinks {
public:
    /// @p file must outlive this.
    explicit AspectLinks(const ExchangeFile& file);

    /// Geometric items: of the aspect itself and of the aspects that make it up, each once. A
    /// product definition shape stands for its product definition.
    std::vector<EntityNumber> ItemsOf(EntityNumber aspect) const;

    /// The aspects that relate to @p aspect: of a datum its features and targets.
    std::vector<EntityNumber> FeaturesOf(EntityNumber aspect) const;
    /// The aspects that @p aspect relates to.
    std::vector<EntityNumber> PartsOf(EntityNumber aspect) const;

    /// The product definition whose shape @p target, an aspect or a shape, describes; 0 if none.
    EntityNumber ProductOf(EntityNumber target) const;

private:
    using Links = std::unordered_map<EntityNumber, std::vector<EntityNumber>>;

    static std::vector<EntityNumber> Find(const Links& links, EntityNumber from);
    void Collect(EntityNumber aspect, std::set<EntityNumber>& seen,
                 std::vector<EntityNumber>& items) const;

    const ExchangeFile& _file;
    Links _items;
    Links _parts;
    Links _features;
};

}  // namespace kesview
