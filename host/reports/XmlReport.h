#pragma once

/// @file
/// Reports as XML: written, saved whole, restored and compared.

#include <KesVizCore/report/AReport.h>

#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string>

namespace kesview {

namespace viz = KesVizCore;

/// A report that is an XML tree.
///
/// Attributes are written as true or false, as decimals that read back exactly, and as texts.
/// Texts in a row are one text, an empty one is none. What XML cannot hold is written as XmlText.h
/// tells.
///
/// @par Errors
/// Content that makes no tree throws std::runtime_error and changes nothing: anything before
/// StartReport or after the report's element, a second StartReport, a second attribute of one name,
/// CloseElement without OpenElement, EndReport with elements open. SaveTo and Restore answer false
/// and leave the reason in Problem(); what Restore found until then is dropped.
class XmlReport : public viz::AReport {
public:
    /// Why the last SaveTo or Restore failed, in one sentence; empty when it did not.
    const std::string& Problem() const { return _problem; }

    /// The report's element; none before StartReport. Valid while the report lives.
    pugi::xml_node Root() const { return _document.document_element(); }

    /// The whole report as UTF-8, as SaveTo writes it.
    std::string ToUtf8() const;

protected:
    void start(std::string name) override;
    void end() override;
    void openElement(std::string name) override;
    void closeElement() override;
    void addAttribute(std::string name, bool value) override;
    void addAttribute(std::string name, std::uint64_t value) override;
    void addAttribute(std::string name, std::wstring value) override;
    void addAttribute(std::string name, double value) override;
    void addComment(std::wstring comment) override;
    void addText(std::wstring text) override;
    std::wstring toText() const override;
    bool saveTo(std::wstring path) const override;
    bool restore(std::wstring path) override;
    /// True when both hold the same; comments count for nothing. Otherwise @p difference is the
    /// first difference in a sentence and @p detail its path; both are emptied when there is none.
    bool compare(const viz::AReport& other, std::wstring& difference,
                 std::string& detail) const override;

private:
    void assertOpen(const char* what) const;
    void setAttribute(const std::string& name, const std::string& value);
    void flushText();

    pugi::xml_document _document;
    pugi::xml_node _current;  ///< the innermost open element; none before the start
    std::size_t _depth = 0;   ///< of the innermost open element; the report's own is 1
    std::size_t _deepest = 0;
    std::wstring _text;  ///< that still may go on
    mutable std::string _problem;
};

}  // namespace kesview
