#pragma once

#include <KesVizCore/report/AReport.h>

#include <cstddef>
#include <string>
#include <utility>

namespace KesVizCore {

/// How the library adds to a report: as by the report's own operations, but a name, whose length
/// the compiler knows, is made at once where the derived class takes it.
class ReportWriter {
public:
    explicit ReportWriter(AReport& report) : _report(report) {}

    template <std::size_t size>
    void OpenElement(const char (&name)[size]) {
        _report.assertNotDefined();
        _report.openElement(std::string(name, size - 1));
    }

    template <std::size_t size, typename Value>
    void AddAttribute(const char (&name)[size], Value value) {
        _report.assertNotDefined();
        _report.addAttribute(std::string(name, size - 1), std::move(value));
    }

    void AddText(const wchar_t* text) {
        _report.assertNotDefined();
        _report.addText(text);
    }

    void CloseElement() {
        _report.assertNotDefined();
        _report.closeElement();
    }

private:
    AReport& _report;
};

}  // namespace KesVizCore
