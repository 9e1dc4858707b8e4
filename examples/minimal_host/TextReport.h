#pragma once

/// @file
/// A report as indented text, which is also what its files hold.

#include <KesVizCore/report/AReport.h>
#include <KesVizCore/report/AReportFactory.h>

#include <cstddef>
#include <string>
#include <vector>

namespace host {

namespace viz = KesVizCore;

/// A line for each element, with its attributes behind its name, two blanks deeper for each level.
///
/// Texts stand in quotes with all that is not printable ASCII spelled out, so that a report is the
/// same on every platform and a line is always a line.
class TextReport : public viz::AReport {
protected:
    void start(std::string name) override;
    /// Throws std::logic_error when an element is still open.
    void end() override;
    void openElement(std::string name) override;
    /// Throws std::logic_error when none is open.
    void closeElement() override;
    void addAttribute(std::string name, bool value) override;
    void addAttribute(std::string name, std::uint64_t value) override;
    void addAttribute(std::string name, std::wstring value) override;
    void addAttribute(std::string name, double value) override;
    void addComment(std::wstring comment) override;
    void addText(std::wstring text) override;
    std::wstring toText() const override;
    bool saveTo(std::wstring path) const override;
    /// False, with nothing read, for a file that is not such a report.
    bool restore(std::wstring path) override;
    /// True when both say the same. Otherwise @p difference says what and @p detail where.
    bool compare(const AReport& other, std::wstring& difference,
                 std::string& detail) const override;

private:
    void addLine(const std::string& text);
    void addToOpenElement(const std::string& name, const std::string& value);
    std::string joined() const;

    std::vector<std::string> _lines;
    std::vector<std::size_t> _open;  ///< the lines of the open elements, the report's own first
};

/// Installed in the library as the active one.
class TextReportFactory : public viz::AReportFactory {
public:
    TextReportFactory() : AReportFactory("text") {}
    viz::AReport* MakeReport() override { return new TextReport(); }
};

}  // namespace host
