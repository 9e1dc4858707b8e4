#include "core/Allocation.h"
#include "report/ReportWriter.h"

#include <KesVizCore/core/RenderId.h>
#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/graph/Attribute.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeHighlight.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/graph/GeoNode.h>
#include <KesVizCore/graph/Node.h>
#include <KesVizCore/report/Utils.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace KesVizCore {

namespace {

wchar_t* putChannel(wchar_t* to, std::uint8_t channel) {
    if (channel >= 100) {
        *to++ = static_cast<wchar_t>(L'0' + channel / 100);
    }
    if (channel >= 10) {
        *to++ = static_cast<wchar_t>(L'0' + channel / 10 % 10);
    }
    *to++ = static_cast<wchar_t>(L'0' + channel % 10);
    *to++ = L',';
    return to;
}

std::wstring channelsText(const RGBAColor& color) {
    wchar_t text[16];  // four numbers of up to three digits, a comma behind each
    wchar_t* end = text;
    for (const std::uint8_t channel :
         {color.GetRed(), color.GetGreen(), color.GetBlue(), color.GetAlpha()}) {
        end = putChannel(end, channel);
    }
    return std::wstring(text, end - 1);
}

/// The double blanks that set off groups of four are part of the format.
std::wstring matrixText(const double* m) {
    return Utils::SWprintfL(
        L" = [ %5.3f, %5.3f, %5.3f, %5.3f,  %5.3f, %5.3f, %5.3f, %5.3f,  %5.3f, %5.3f, %5.3f, "
        L"%5.3f,  %5.3f, %5.3f, %5.3f, %5.3f]",
        m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12], m[13],
        m[14], m[15]);
}

void reportGeometry(ReportWriter& writer, AGeometryItem& item) {
    writer.OpenElement("Geometry");
    writer.AddAttribute("ID", item.ID());
    writer.AddAttribute("Type", Utils::StringToWstring(item.ToString()));
    writer.CloseElement();
}

/// The attribute as one of that kind, or null where its type or its class is another.
template <typename Kind>
Kind* attributeAs(int type, Attribute* attribute) {
    const bool ofType = attribute != nullptr && attribute->GetType() == type;
    return ofType ? dynamic_cast<Kind*>(attribute) : nullptr;
}

void reportAttribute(ReportWriter& writer, Attribute* attribute) {
    writer.OpenElement("Attribute");
    if (auto* color = attributeAs<AttributeColor>(AttributeType::Color, attribute)) {
        writer.AddAttribute("Type", std::wstring(L"Color"));
        writer.AddAttribute("Color", channelsText(color->GetColor()));
    } else if (auto* highlight =
                   attributeAs<AttributeHighlight>(AttributeType::Highlight, attribute)) {
        writer.AddAttribute("Type", std::wstring(L"Highlight"));
        writer.AddAttribute("OriginalColor", channelsText(highlight->GetOriginalColor()));
    } else if (auto* visibility =
                   attributeAs<AttributeVisibility>(AttributeType::Visibility, attribute)) {
        writer.AddAttribute("Type", std::wstring(L"Visibility"));
        writer.AddAttribute("Value", bool{visibility->GetIsVisible()});
    } else if (auto* transform =
                   attributeAs<AttributeTransform>(AttributeType::Transform, attribute)) {
        writer.AddAttribute("Type", std::wstring(L"Transform"));
        writer.AddAttribute("Matrix", matrixText(transform->GetTransform()));
    } else {
        writer.AddText(L"Type is Unknown\n");  // line styles are among these
    }
    writer.CloseElement();
}

}  // namespace

std::uint64_t GeoNode::NodeCounter = 0;

GeoNode::GeoNode(const std::uint64_t& id) : _id(id), _filterId(-1), _isGroup(false) {}

GeoNode::GeoNode(const GeoNode& other)
    : _id(other._id),
      _filterId(other._filterId),
      _isGroup(false),
      _name(other._name),
      _attributes(other._attributes),
      _parents(other._parents),
      _geometry(other._geometry) {}

GeoNode& GeoNode::operator=(const GeoNode& other) {
    _name = other._name;
    _attributes = other._attributes;
    _parents = other._parents;
    _geometry = other._geometry;
    _id = other._id;
    _filterId = other._filterId;
    return *this;
}

GeoNode::~GeoNode() {
    _parents.clear();
    for (Attribute* attribute : _attributes) {
        delete attribute;
    }
    _attributes.clear();
    GeoNode::DeleteAllGeometry();
}

std::wstring GeoNode::Name() const {
    return _name.Get();
}

void GeoNode::SetName(const std::wstring& name) {
    _name.Set(name);
}

void GeoNode::SetFilterID(const int& filterId) {
    _filterId = filterId;
}

bool GeoNode::HasChildren() const {
    return false;
}

// --- identity -----------------------------------------------------------------------------------

RenderId* GeoNode::GetRenderId() const {
    const auto parentOf = [](const GeoNode* node) -> const GeoNode* {
        return node->_parents.empty() ? nullptr : node->_parents.front();
    };
    int length = 0;
    for (const GeoNode* node = this; node != nullptr; node = parentOf(node)) {
        ++length;
    }
    return nullWhenExhausted([&] {
        RenderId path;
        path.SetOrigin(View3D);
        path.SetLength(length);
        int place = length;
        for (const GeoNode* node = this; node != nullptr; node = parentOf(node)) {
            path[--place] = node->_id;
        }
        return new RenderId(std::move(path));
    });
}

// --- parents ------------------------------------------------------------------------------------

Node* GeoNode::GetParent(const std::uint64_t& id) const {
    const auto found = std::find_if(_parents.begin(), _parents.end(), [&id](const Node* parent) {
        return parent != nullptr && parent->Id() == id;
    });
    return found != _parents.end() ? *found : nullptr;
}

void GeoNode::AddToParents(Node* parent) {
    if (std::find(_parents.begin(), _parents.end(), parent) == _parents.end()) {
        _parents.push_back(parent);
    }
}

void GeoNode::RemoveFromParents(Node* parent) {
    const auto place = std::find(_parents.begin(), _parents.end(), parent);
    if (place != _parents.end()) {
        _parents.erase(place);
    }
}

// --- attributes ---------------------------------------------------------------------------------

namespace {

/// The place of the first element that is not null and fulfils the condition, or else the end. The
/// condition asks the host, which may make a vector of the list on the way.
template <typename Element, typename Condition>
auto placeWhere(const PointerList<Element>& list, Condition isWanted) {
    std::size_t index = 0;
    while (index < list.size() &&
           (list.begin()[index] == nullptr || !isWanted(*list.begin()[index]))) {
        ++index;
    }
    return list.begin() + index;
}

auto findAttribute(const PointerList<Attribute>& attributes, AttributeType type) {
    return placeWhere(attributes,
                      [type](Attribute& attribute) { return attribute.GetType() == type; });
}

}  // namespace

bool GeoNode::SetAttribute(Attribute* attribute) {
    if (attribute == nullptr) {
        return false;
    }
    const auto place = findAttribute(_attributes, attribute->GetType());
    if (place == _attributes.end()) {
        _attributes.push_back(attribute);
        return true;
    }
    Attribute* const replaced = *place;
    _attributes.set(place, attribute);
    if (replaced != attribute) {
        delete replaced;
    }
    return true;
}

Attribute* GeoNode::GetAttribute(AttributeType type) const {
    const auto place = findAttribute(_attributes, type);
    return place != _attributes.end() ? *place : nullptr;
}

void GeoNode::DeleteAttribute(AttributeType type) {
    const auto place = findAttribute(_attributes, type);
    if (place != _attributes.end()) {
        _attributes.erase(place);
    }
}

// --- geometry -----------------------------------------------------------------------------------

void GeoNode::AddGeometry(AGeometryItem* item) {
    _geometry.push_back(item);
}

void GeoNode::DeleteGeometryById(const std::uint64_t& id) {
    const auto place =
        placeWhere(_geometry, [&id](const AGeometryItem& item) { return item.ID() == id; });
    if (place != _geometry.end()) {
        _geometry.erase(place);
    }
}

void GeoNode::DeleteAllGeometry() {
    for (AGeometryItem* item : _geometry) {
        delete item;
    }
    _geometry.clear();
}

void GeoNode::TransferGeometryFrom(GeoNode* source) {
    if (source == nullptr || source == this) {
        return;
    }
    if (_geometry.empty()) {
        _geometry = source->_geometry;
    } else {
        std::vector<AGeometryItem*>& items = _geometry.AsVector();
        items.insert(items.end(), source->_geometry.begin(), source->_geometry.end());
    }
    source->_geometry.clear();
}

// --- text forms ---------------------------------------------------------------------------------

bool GeoNode::GetReport(AReport& report) {
    ReportWriter writer(report);
    writer.OpenElement("GeoNode");
    writer.AddAttribute("ID", _id);
    writer.AddAttribute("Name", _name.Get());
    getReport(report);
    writer.CloseElement();
    return true;
}

void GeoNode::getReport(AReport& report) {
    ReportWriter writer(report);
    for (AGeometryItem* item : _geometry) {
        if (item != nullptr) {
            reportGeometry(writer, *item);
        }
    }
    for (Attribute* attribute : _attributes) {
        reportAttribute(writer, attribute);
    }
    for (const Node* parent : _parents) {
        if (parent != nullptr) {
            writer.OpenElement("Parent");
            writer.AddAttribute("ID", parent->_id);
            writer.AddAttribute("Name", parent->_name.Get());
            writer.CloseElement();
        }
    }
}

std::string GeoNode::ToString() const {
    constexpr std::size_t longest = 4095;
    const std::wstring name = Name();
    std::wstring text = L"[" + std::to_wstring(_id) + L"] \"" + name.substr(0, name.find(L'\0')) +
                        L"\" parents(" + std::to_wstring(_parents.size()) + L") attributes(" +
                        std::to_wstring(_attributes.size()) + L") geoEntities(" +
                        std::to_wstring(_geometry.size()) + L")";
    text.resize(std::min(text.size(), longest));
    return Utils::WstringToString(text);
}

}  // namespace KesVizCore
