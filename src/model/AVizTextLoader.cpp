#include "core/Allocation.h"

#include <KesVizCore/model/AVizTextLoader.h>
#include <KesVizCore/model/VizText.h>

namespace KesVizCore {

VizElement* AVizTextLoader::makeOne() {
    return nullWhenExhausted([] { return new VizText(); });
}

void AVizTextLoader::setFontAttrs(VizText& text, const FontAttr& font) {
    text._font = font;
}

}  // namespace KesVizCore
