#include <KesVizCore/report/AReport.h>

#include <stdexcept>
#include <utility>

namespace KesVizCore {

AReport::~AReport() = default;

void AReport::StartReport(std::string name) {
    assertNotDefined();
    _name = name;
    start(std::move(name));
}

void AReport::OpenElement(std::string name) {
    assertNotDefined();
    openElement(std::move(name));
}

void AReport::AddAttribute(std::string name, bool value) {
    assertNotDefined();
    addAttribute(std::move(name), value);
}

void AReport::AddAttribute(std::string name, std::uint64_t value) {
    assertNotDefined();
    addAttribute(std::move(name), value);
}

void AReport::AddAttribute(std::string name, std::wstring value) {
    assertNotDefined();
    addAttribute(std::move(name), std::move(value));
}

void AReport::AddAttribute(std::string name, double value) {
    assertNotDefined();
    addAttribute(std::move(name), value);
}

void AReport::AddText(std::wstring text) {
    assertNotDefined();
    addText(std::move(text));
}

void AReport::AddComment(std::wstring comment) {
    assertNotDefined();
    addComment(std::move(comment));
}

void AReport::CloseElement() {
    assertNotDefined();
    closeElement();
}

void AReport::EndReport() {
    assertNotDefined();
    end();
    define();
}

bool AReport::Restore(std::wstring path) {
    assertNotDefined();
    const bool restored = restore(std::move(path));
    define();
    return restored;
}

std::wstring AReport::ToText() const {
    assertDefined("Report has not been completed");
    return toText();
}

bool AReport::SaveTo(std::wstring path) const {
    assertDefined("Report has not been completed");
    return saveTo(std::move(path));
}

bool AReport::Compare(const AReport& other, std::wstring& difference, std::string& detail) const {
    assertDefined("Report is not complete");
    return compare(other, difference, detail);
}

bool AReport::IsDefined() const {
    return _defined;
}

std::string AReport::GetName() const {
    return _name;
}

void AReport::assertNotDefined() const {
    if (_defined) {
        throw std::runtime_error("Report has been finalized, can't add content");
    }
}

void AReport::define() {
    assertNotDefined();
    _defined = true;
}

void AReport::assertDefined(const char* message) const {
    if (!_defined) {
        throw std::runtime_error(message);
    }
}

}  // namespace KesVizCore
