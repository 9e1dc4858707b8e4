#include <KesVizCore/pmi/SemanticPMI.h>

#include <cstddef>
#include <cstdint>

namespace KesVizCore {

namespace {

/// The attributes that are printed, in the order in which they are.
constexpr const wchar_t* kPrintedKeys[] = {L"Value",
                                           L"LowerVal",
                                           L"UpperVal",
                                           L"Precision",
                                           L"MainType",
                                           L"SubType",
                                           L"Tolerance Value",
                                           L"Tolerance Type",
                                           L"Value Type",
                                           L"TolNote",
                                           L"AllAround",
                                           L"IsComposite",
                                           L"ProjTolZoneLength",
                                           L"RateUnit1",
                                           L"RateUnit2",
                                           L"RefineTolerance",
                                           L"ShiftValue",
                                           L"ApplicabilityType",
                                           L"ObtentionType",
                                           L"Manages_Geometry",
                                           L"Hidden"};

std::vector<std::wstring> split(const std::wstring& text) {
    const std::wstring separator = L", ";
    std::vector<std::wstring> pieces;
    std::size_t begin = 0;
    std::size_t end = text.find(separator);
    while (end != std::wstring::npos) {
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + separator.size();
        end = text.find(separator, begin);
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

const wchar_t* kindName(const EntityId& entity) {
    if (entity.IsBody()) {
        return L"Body";
    }
    if (entity.IsFace()) {
        return L"Face";
    }
    if (entity.IsEdge()) {
        return L"Edge";
    }
    return entity.IsVertex() ? L"Vertex" : L"Other";
}

std::wstring linksBlock(const std::vector<EntityId>& entities,
                        const std::vector<std::wstring>& links) {
    const auto count = static_cast<std::int32_t>(entities.size() + links.size());
    if (count < 1) {
        return std::wstring();
    }
    std::wstring block = L"Links (" + std::to_wstring(count) + L") : \n";
    for (const EntityId& entity : entities) {
        block += L"    " + std::to_wstring(entity.ID) + L" (" + kindName(entity) + L")\n";
    }
    for (const std::wstring& link : links) {
        block += link + L" (PMI)\n";
    }
    return block;
}

}  // namespace

SemanticPMI::SemanticPMI() = default;
SemanticPMI::SemanticPMI(const SemanticPMI& other) = default;
SemanticPMI::SemanticPMI(SemanticPMI&& other) noexcept = default;
SemanticPMI& SemanticPMI::operator=(const SemanticPMI& other) = default;
SemanticPMI& SemanticPMI::operator=(SemanticPMI&& other) noexcept = default;
SemanticPMI::~SemanticPMI() = default;

bool SemanticPMI::GetPMILinks(std::vector<std::wstring>& links) const {
    const auto references = Attributes.find(L"DatumRefDatas");
    if (references == Attributes.end()) {
        return false;
    }
    links = split(references->second);
    return true;
}

std::wstring SemanticPMI::ToString() const {
    const std::wstring rule = L"--------------\n";
    std::wstring dump = rule + L"Semantic Info:\n\n" + L"ID : " + Id + L"\n" + L"Name : " + Name +
                        L"\n" + L"Label : " + Label + L"\n" + L"Units : millimeters, radians\n";
    for (const wchar_t* key : kPrintedKeys) {
        const auto attribute = Attributes.find(key);
        if (attribute != Attributes.end() && !attribute->second.empty()) {
            dump += attribute->first + L" : " + attribute->second + L"\n";
        }
    }
    std::vector<std::wstring> links;
    GetPMILinks(links);
    return dump + linksBlock(LinkedEntities, links) + rule;
}

}  // namespace KesVizCore
