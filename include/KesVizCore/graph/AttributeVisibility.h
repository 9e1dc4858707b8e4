#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/graph/Attribute.h>

namespace KesVizCore {

/// Whether a node is shown.
///
/// @par Ownership
/// As for every Attribute.
///
/// @par Errors
/// No operation fails.
///
/// @par Threads
/// None of its own: attributes are used on the thread of their graph.
class KESVIZCORE_API AttributeVisibility : public Attribute {
public:
    explicit AttributeVisibility(const bool& visible);  ///< false hides the node

    virtual const bool& GetIsVisible();              ///< valid as long as the attribute
    virtual void SetIsVisible(const bool& visible);  ///< false hides the node

private:
    bool _visible;
};

}  // namespace KesVizCore
