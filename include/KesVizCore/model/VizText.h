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
/// No operation fails. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizText : public VizElement {
public:
    static std::string TypeID();

    VizText(const VizText& other);
    VizText& operator=(const VizText& other);

    std::string GetElementType() const override;
    ~VizText() override;
    /// Moves anchor, direction and normal as points: the translation is added to all three. Then
    /// the normal is brought to length 1, unless it has none; the direction is not. The font
    /// stays.
    void ApplyTransform(float targetFromSource[4][4]) override;

    std::wstring GetText() const;
    void SetText(const std::wstring& text);
    std::wstring GetFontName() const;
    void SetFontName(const std::wstring& name);

    const float* GetAnchorPoint() const;
    void SetAnchorPoint(const float* point);
    const float* GetDirection() const;
    void SetDirection(const float* direction);
    const float* GetNormal() const;
    void SetNormal(const float* normal);

    /// All factors 1.0 unless the loader says otherwise (AVizTextLoader::setFontAttrs).
    FontAttr GetFontAttrs() const;
    float GetFontSize() const;
    float GetSpacingFactor() const;
    float GetWidthScaling() const;
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
