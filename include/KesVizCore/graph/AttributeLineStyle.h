#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/Attribute.h>

#include <string>

namespace KesVizCore {

/// How the lines of a node are drawn: a weight and a named pattern.
///
/// @par Units and ranges
/// Weight and pattern are read by the host alone and stored unchecked.
///
/// @par Ownership
/// As for every Attribute.
///
/// @par Errors
/// std::bad_alloc when memory runs out for a copy of the pattern; nothing else fails.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API AttributeLineStyle : public Attribute {
public:
    /// Note the order: the weight first, where SceneBuilder::SetLineStyle takes it last.
    AttributeLineStyle(const float& weight, const std::string& pattern);
    AttributeLineStyle(const AttributeLineStyle& other);             ///< member by member
    AttributeLineStyle& operator=(const AttributeLineStyle& other);  ///< member by member
    ~AttributeLineStyle() override;

    virtual const float& GetWeight();                     ///< valid as long as the attribute
    virtual void SetWeight(const float& weight);          ///< the pattern stays
    virtual const std::string& GetPattern();              ///< valid as long as the attribute
    virtual void SetPattern(const std::string& pattern);  ///< the weight stays

private:
    float _weight;
    std::string _pattern;
};

}  // namespace KesVizCore
