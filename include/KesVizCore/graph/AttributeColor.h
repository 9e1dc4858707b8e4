#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/Attribute.h>

namespace KesVizCore {

/// The colour of a node.
///
/// @par Ownership
/// As for every Attribute.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API AttributeColor : public Attribute {
public:
    /// @p priority is the host's mark that this colour wins over others; it never changes.
    AttributeColor(const RGBAColor& color, const bool& priority);

    virtual const RGBAColor& GetColor();            ///< valid as long as the attribute
    virtual void SetColor(const RGBAColor& color);  ///< the priority stays

    /// Always the stored colour's IsOpaque().
    bool GetIsOpaque() const;
    bool HasPriority() const;  ///< as given to the constructor

private:
    RGBAColor _color;
    bool _opaque;
    bool _priority;
};

}  // namespace KesVizCore
