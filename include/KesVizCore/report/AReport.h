#pragma once

#include <KesVizCore/Export.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// A tree of named elements with attributes, texts and comments, written once and then frozen.
///
/// This base keeps the life cycle and nothing of the content: a host derives from it, and there
/// the text form, the file form and the comparison are made. A report is open after construction
/// and becomes defined by EndReport or Restore, for good. While it is open, content is added in
/// any order; whether elements are balanced, and StartReport came first, is left to the derived
/// class. Once it is defined, it can be turned into text, saved and compared.
///
/// @par Errors
/// An operation that comes too late or too early throws std::runtime_error before anything is
/// called or changed. std::bad_alloc when memory runs out for the copies of the arguments. What an
/// operation of the derived class throws passes through; EndReport and Restore then leave the
/// report open, StartReport the new name.
///
/// @par Threads
/// One thread at a time while the report is open. A defined report may be read by many as far as
/// the derived class allows.
class KESVIZCORE_API AReport {
public:
    virtual ~AReport();

    /// @name Content
    /// Each throws "Report has been finalized, can't add content" when the report is defined, and
    /// otherwise calls the operation of the derived class once, with copies of its arguments.
    /// @{

    /// Begins the report; @p name is its element's name and from now on GetName(), also where what
    /// it calls throws.
    void StartReport(std::string name);
    void OpenElement(std::string name);  ///< inside the element that is open
    /// Gives the open element an attribute. A wide literal chooses this overload, as pointers turn
    /// into bool before they turn into a text: wrap it, as in AddAttribute("Name",
    /// std::wstring(L"Cube")).
    void AddAttribute(std::string name, bool value);
    /// Gives the open element an attribute.
    void AddAttribute(std::string name, std::uint64_t value);
    /// As for a whole number.
    void AddAttribute(std::string name, std::wstring value);
    /// As for a whole number.
    void AddAttribute(std::string name, double value);
    void AddText(std::wstring text);        ///< to the element that is open
    void AddComment(std::wstring comment);  ///< for readers: no content
    /// Closes the element that was opened last and is still open.
    void CloseElement();
    /// Ends the report, which is defined from now on.
    void EndReport();
    /// Fills the report from the file at @p path and answers whether that succeeded. The report
    /// is defined from now on, also when it did not succeed.
    bool Restore(std::wstring path);
    /// @}

    /// @name Of a defined report
    /// @{

    /// The whole report as text. Throws "Report has not been completed" while the report is open.
    std::wstring ToText() const;
    /// Writes the report to a file at @p path and answers whether that succeeded. Throws "Report
    /// has not been completed" while the report is open.
    bool SaveTo(std::wstring path) const;
    /// What the derived class finds when it compares this report with @p other: its answer, and
    /// in @p difference and @p detail what it writes there. Throws "Report is not complete" while
    /// this report is open; @p other may be open.
    bool Compare(const AReport& other, std::wstring& difference, std::string& detail) const;
    /// @}

    /// True once the report is complete and can no longer be changed.
    bool IsDefined() const;
    /// The name given to StartReport; empty before.
    std::string GetName() const;

protected:
    /// @name What the derived class implements
    /// The public operation of the same name calls it after checking the life cycle.
    /// @{

    /// Begins the report with an element of that name.
    virtual void start(std::string name) = 0;
    /// Ends it; the report is defined after this returns.
    virtual void end() = 0;
    /// Opens an element inside the one that is open.
    virtual void openElement(std::string name) = 0;
    /// Closes the element that was opened last and is still open.
    virtual void closeElement() = 0;
    /// Gives the open element an attribute.
    virtual void addAttribute(std::string name, bool value) = 0;
    /// As for bool.
    virtual void addAttribute(std::string name, std::uint64_t value) = 0;
    /// As for bool.
    virtual void addAttribute(std::string name, std::wstring value) = 0;
    /// As for bool.
    virtual void addAttribute(std::string name, double value) = 0;
    /// Adds what only readers look at.
    virtual void addComment(std::wstring comment) = 0;
    /// Adds text to the open element.
    virtual void addText(std::wstring text) = 0;
    /// The whole of a defined report as text.
    virtual std::wstring toText() const = 0;
    /// Writes a defined report to a file; whether that succeeded.
    virtual bool saveTo(std::wstring path) const = 0;
    /// Reads a report from a file; whether that succeeded. Called while the report is still open,
    /// so that it may fill it by the public operations.
    virtual bool restore(std::wstring path) = 0;
    /// Compares two reports: the answer and both texts are of its own making.
    virtual bool compare(const AReport& other, std::wstring& difference,
                         std::string& detail) const = 0;
    /// @}

    /// Throws "Report has been finalized, can't add content" when the report is defined.
    void assertNotDefined() const;
    /// Makes the report defined. Throws as assertNotDefined when it is defined already.
    void define();

    std::string _name;  ///< set by StartReport, before it calls start

private:
    friend class ReportWriter;

    void assertDefined(const char* message) const;

    bool _defined = false;
};

}  // namespace KesVizCore
