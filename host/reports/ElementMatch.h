#pragma once

/// @file
/// Finds for the children of an element their partners in another report.

#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <vector>

namespace kesview {

/// The elements and texts of @p element, in order; comments and the like are left out.
std::vector<pugi::xml_node> contentOf(pugi::xml_node element);

/// A number for every element and text of a tree that is the same for equal content.
class ContentNumbers {
public:
    explicit ContentNumbers(pugi::xml_node root);
    std::uint64_t Of(pugi::xml_node node) const { return _numbers.at(node.internal_object()); }

private:
    std::unordered_map<const void*, std::uint64_t> _numbers;
};

/// What makes an element the same one in two reports: "Node[@Name='Bolt']", "Face[@ID='7']" or
/// "Geometry"; "text()" of a text.
std::string keyOf(pugi::xml_node node);

/// Indices into two lists; a partner is missing where it is none.
struct Match {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t before = none;
    std::size_t after = none;
    bool moved = false;  ///< its order among the other pairs is not the same in both
};

/// Each child of both sides once: those of @p after in their order, each removed one after its
/// predecessor in @p before.
std::vector<Match> matchContent(const std::vector<pugi::xml_node>& before,
                                const ContentNumbers& beforeNumbers,
                                const std::vector<pugi::xml_node>& after,
                                const ContentNumbers& afterNumbers);

}  // namespace kesview
