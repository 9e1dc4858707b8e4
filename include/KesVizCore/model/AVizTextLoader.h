#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizText;

/// Makes the texts (VizText) that a host fills; see AVizElementLoader.
///
/// @par Errors
/// As for AVizElementLoader.
///
/// @par Threads
/// As for AVizElementLoader.
class KESVIZCORE_API AVizTextLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;  ///< a VizText

    /// Replaces the font of @p text, which has no setter for it.
    static void setFontAttrs(VizText& text, const FontAttr& font);
};

}  // namespace KesVizCore
