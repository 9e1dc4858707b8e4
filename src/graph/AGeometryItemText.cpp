#include <KesVizCore/graph/AGeometryItemText.h>

namespace KesVizCore {

AGeometryItemText::AGeometryItemText(const std::uint64_t& id, const std::wstring& firstText,
                                     const std::wstring& secondText, float* /*position*/,
                                     const FontAttr& font, const float& number)
    : AGeometryItem(id),
      _font(font),
      _number(number),
      _firstText(firstText),
      _secondText(secondText) {}

std::string AGeometryItemText::ToString() {
    return "Text";
}

}  // namespace KesVizCore
