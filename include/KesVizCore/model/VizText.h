#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/model/VizElement.h>

#include <string>

namespace KesVizCore {

/// A text in space: what it says, its font, and where and how it stands.
///
/// @par Units and ranges
/// Anchor, direction of writing and normal are 3 floats each, all 0 at first, stored unchecked;
/// the anchor in model units.
///
/// @par Ownership
/// Made by AVizTextLoader; owned by the annotation that holds it. Pointers handed out are valid as
/// long as the text.
///
/// @par Errors
/// std::bad_alloc when memory runs out; nothing else fails. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizText : public VizElement {
public:
    static std::string TypeID();  ///< "Text"

    VizText(const VizText& other);             ///< member by member
    VizText& operator=(const VizText& other);  ///< member by member

    std::string GetElementType() const override;
    ~VizText() override;
    /// Moves anchor, direction and normal by 16 floats, read column by column, with the translation
    /// at 12..14, as points: the translation is added to all three. Then the normal is brought to
    /// length 1, unless it has none; one whose length no float can hold becomes zeros. The
    /// direction is left as moved. The font stays.
    void ApplyTransform(float targetFromSource[4][4]) override;

    std::wstring GetText() const;                ///< empty at first
    void SetText(const std::wstring& text);      ///< any text
    std::wstring GetFontName() const;            ///< empty at first
    void SetFontName(const std::wstring& name);  ///< any text

    const float* GetAnchorPoint() const;        ///< 3 floats
    void SetAnchorPoint(const float* point);    ///< copies 3 floats
    const float* GetDirection() const;          ///< 3 floats, of any length
    void SetDirection(const float* direction);  ///< copies 3 floats
    const float* GetNormal() const;             ///< 3 floats, of any length until a transform
    void SetNormal(const float* normal);        ///< copies 3 floats

    /// All factors 1.0 unless the loader says otherwise (AVizTextLoader::setFontAttrs).
    FontAttr GetFontAttrs() const;
    float GetFontSize() const;       ///< model units
    float GetSpacingFactor() const;  ///< without unit
    float GetWidthScaling() const;   ///< without unit
    /// Makes the colour opaque; an element without a colour stays without.
    void RemoveTransparency();

private:
    friend class AVizTextLoader;

    VizText();

    float _anchorPoint[3];
    float _direction[3];
    float _normal[3];
    FontAttr _font;
    std::wstring _text;
    std::wstring _fontName;
};

}  // namespace KesVizCore
