#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/model/AVizElementLoader.h>

namespace KesVizCore {

class VizText;

/// Makes the texts (VizText) that a host fills; see AVizElementLoader.
class KESVIZCORE_API AVizTextLoader : public AVizElementLoader {
protected:
    VizElement* makeOne() override;

    /// Replaces the font of @p text, which has no setter for it.
    static void setFontAttrs(VizText& text, const FontAttr& font);
};

}  // namespace KesVizCore
