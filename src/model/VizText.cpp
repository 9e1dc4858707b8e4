#include "model/Triples.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizText.h>

#include <algorithm>
#include <cmath>

namespace KesVizCore {

namespace {

void transformPoint(float* point, const float* m) {
    const float x = point[0];
    const float y = point[1];
    const float z = point[2];
    for (int axis = 0; axis < 3; ++axis) {
        point[axis] = m[axis] * x + m[axis + 4] * y + m[axis + 8] * z + m[axis + 12];
    }
}

}  // namespace

std::string VizText::TypeID() {
    return "Text";
}

VizText::VizText() : _anchorPoint{}, _direction{}, _normal{} {}

VizText::VizText(const VizText& other) = default;
VizText& VizText::operator=(const VizText& other) = default;
VizText::~VizText() = default;

std::string VizText::GetElementType() const {
    return TypeID();
}

void VizText::ApplyTransform(float targetFromSource[4][4]) {
    const float* const m = asArray(targetFromSource);
    transformPoint(_anchorPoint, m);
    transformPoint(_direction, m);
    transformPoint(_normal, m);
    const float length = Length(_normal);
    if (length > 0.0F) {
        for (float& component : _normal) {
            component /= length;
        }
    }
}

std::wstring VizText::GetText() const {
    return _text;
}

void VizText::SetText(const std::wstring& text) {
    _text = text;
}

std::wstring VizText::GetFontName() const {
    return _fontName;
}

void VizText::SetFontName(const std::wstring& name) {
    _fontName = name;
}

const float* VizText::GetAnchorPoint() const {
    return _anchorPoint;
}

void VizText::SetAnchorPoint(const float* point) {
    std::copy(point, point + 3, _anchorPoint);
}

const float* VizText::GetDirection() const {
    return _direction;
}

void VizText::SetDirection(const float* direction) {
    std::copy(direction, direction + 3, _direction);
}

const float* VizText::GetNormal() const {
    return _normal;
}

void VizText::SetNormal(const float* normal) {
    std::copy(normal, normal + 3, _normal);
}

FontAttr VizText::GetFontAttrs() const {
    return _font;
}

float VizText::GetFontSize() const {
    return _font.FontSize;
}

float VizText::GetSpacingFactor() const {
    return _font.SpacingFactor;
}

float VizText::GetWidthScaling() const {
    return _font.WidthScaling;
}

void VizText::RemoveTransparency() {
    makeColorOpaque();
}

}  // namespace KesVizCore
