#pragma once

/// @file
/// Reports for tests: one writes down every call, the other only counts them.

#include <KesVizCore/graph/GeoNode.h>
#include <KesVizCore/report/AReport.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace KesVizCore::support {

/// A report that answers what it does not record.
class SilentReport : public AReport {
protected:
    void start(std::string /*name*/) override {}
    void end() override {}
    void openElement(std::string /*name*/) override {}
    void closeElement() override {}
    void addAttribute(std::string /*name*/, bool /*value*/) override {}
    void addAttribute(std::string /*name*/, std::uint64_t /*value*/) override {}
    void addAttribute(std::string /*name*/, std::wstring /*value*/) override {}
    void addAttribute(std::string /*name*/, double /*value*/) override {}
    void addComment(std::wstring /*comment*/) override {}
    void addText(std::wstring /*text*/) override {}
    std::wstring toText() const override { return {}; }
    bool saveTo(std::wstring /*path*/) const override { return false; }
    bool restore(std::wstring /*path*/) override { return false; }
    bool compare(const AReport& /*other*/, std::wstring& /*difference*/,
                 std::string& /*detail*/) const override {
        return false;
    }
};

/// One line for each call, indented by the elements that are open around it, such as
///
///     open GeoNode
///       ID = number 5
///       Name = text "A"
///     close
class RecordingReport : public SilentReport {
public:
    /// The lines of the calls so far, each ended by a line break.
    const std::string& Calls() const { return _calls; }

protected:
    void start(std::string name) override { write("start " + name); }
    void end() override { write("end"); }
    void openElement(std::string name) override {
        write("open " + name);
        ++_depth;
    }
    void closeElement() override {
        --_depth;
        write("close");
    }
    void addAttribute(std::string name, bool value) override {
        write(name + " = bool " + (value ? "true" : "false"));
    }
    void addAttribute(std::string name, std::uint64_t value) override {
        write(name + " = number " + std::to_string(value));
    }
    void addAttribute(std::string name, std::wstring value) override {
        write(name + " = text " + quoted(value));
    }
    void addAttribute(std::string name, double value) override {
        write(name + " = double " + std::to_string(value));
    }
    void addComment(std::wstring comment) override { write("comment " + quoted(comment)); }
    void addText(std::wstring text) override { write("text " + quoted(text)); }

private:
    void write(const std::string& call) { _calls += std::string(2 * _depth, ' ') + call + "\n"; }

    /// Characters other than printable ASCII as their numbers, "\10" for a line break.
    static std::string quoted(const std::wstring& text) {
        std::string quote = "\"";
        for (const wchar_t character : text) {
            if (character >= L' ' && character <= L'~') {
                quote += static_cast<char>(character);
            } else {
                quote += "\\" + std::to_string(static_cast<std::uint32_t>(character));
            }
        }
        return quote + "\"";
    }

    std::size_t _depth = 0;
    std::string _calls;
};

/// What a node writes into its report.
inline std::string callsOfReport(GeoNode& node) {
    RecordingReport report;
    node.GetReport(report);
    return report.Calls();
}

/// The numbers of calls, for reports too long to keep.
class CountingReport : public SilentReport {
public:
    std::size_t opened = 0;
    std::size_t closed = 0;
    std::size_t attributes = 0;
    std::size_t characters = 0;  ///< of all texts
    std::size_t deepest = 0;     ///< the most elements that were open at a time

protected:
    void openElement(std::string /*name*/) override {
        ++opened;
        if (opened - closed > deepest) {
            deepest = opened - closed;
        }
    }
    void closeElement() override { ++closed; }
    void addAttribute(std::string /*name*/, bool /*value*/) override { ++attributes; }
    void addAttribute(std::string /*name*/, std::uint64_t /*value*/) override { ++attributes; }
    void addAttribute(std::string /*name*/, std::wstring value) override {
        ++attributes;
        characters += value.size();
    }
    void addAttribute(std::string /*name*/, double /*value*/) override { ++attributes; }
};

}  // namespace KesVizCore::support
