#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/Pooled.h>
#include <KesVizCore/graph/AttributeType.h>

namespace KesVizCore {

/// The base of what a scene-graph node carries beside its geometry: one fact of one kind.
///
/// @par Ownership
/// Made by the scene builder, the adapter or the host with new. GeoNode::SetAttribute gives it
/// to the node, which destroys it when another of its kind takes its place or with itself.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API Attribute : public Pooled {
public:
    /// The kind, fixed by the constructor.
    virtual AttributeType GetType();
    virtual ~Attribute();

    Attribute(const Attribute& other) = default;             ///< copies the kind
    Attribute& operator=(const Attribute& other) = default;  ///< takes the kind of the other

protected:
    /// Any number is taken for a kind: a host may have kinds of its own.
    explicit Attribute(AttributeType type);

private:
    AttributeType _type;
};

}  // namespace KesVizCore
