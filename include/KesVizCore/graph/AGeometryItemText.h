#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/graph/AGeometryItem.h>

#include <string>

namespace KesVizCore {

/// A text: what it says and its font, not where it stands.
///
/// The second text and the number are the host's to give a meaning; they are kept as given.
///
/// @par Ownership
/// As for every AGeometryItem. The position of the constructor is neither read nor kept.
///
/// @par Errors
/// std::bad_alloc when memory runs out for a copy of the texts; nothing else fails.
///
/// @par Threads
/// None of its own: items are used on the thread of their graph.
class KESVIZCORE_API AGeometryItemText : public AGeometryItem {
public:
    /// @p position is x, y, z; null allowed here.
    AGeometryItemText(const std::uint64_t& id, const std::wstring& firstText,
                      const std::wstring& secondText, float* position, const FontAttr& font,
                      const float& number);

    std::string ToString() override;  ///< "Text"

protected:
    FontAttr _font;            ///< as given to the constructor
    float _number;             ///< as given to the constructor
    std::wstring _firstText;   ///< what the text says
    std::wstring _secondText;  ///< as given to the constructor
};

}  // namespace KesVizCore
