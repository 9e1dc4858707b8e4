#include "model/DumpLines.h"

#include <KesVizCore/report/Utils.h>

#include <cstddef>

namespace KesVizCore {

namespace {

/// Values are printed into 64 characters, one of which ends them; what does not fit is left out.
std::wstring valueLine(const std::wstring& label, const std::wstring& value) {
    constexpr std::size_t longest = 63;
    return value.empty() || value.size() > longest ? std::wstring() : textLine(label, value);
}

}  // namespace

std::wstring textLine(const std::wstring& label, const std::wstring& text) {
    return label + text + L"\n";
}

std::wstring flagLine(const std::wstring& label, bool flag) {
    return textLine(label, flag ? L"YES" : L"NO");
}

std::wstring numberLine(const std::wstring& label, float number) {
    return valueLine(label, Utils::SWprintfL(L"%f", double{number}));
}

std::wstring tripleLine(const std::wstring& label, const float* triple) {
    return valueLine(label, Utils::SWprintfL(L"(%2.2f, %2.2f, %2.2f)", double{triple[0]},
                                             double{triple[1]}, double{triple[2]}));
}

}  // namespace KesVizCore
