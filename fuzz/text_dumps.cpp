/// @file
/// Any text as the name of nodes, through dumps and reports, and through the operations on texts:
/// zero characters, surrogates and numbers that are no character too, in two locales.

#include "GraphModel.h"
#include "Input.h"
#include "scene/SceneHost.h"
#include "support/RecordingHost.h"

#include <KesVizCore/KesVizCore.h>

#include <clocale>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>

namespace {

using namespace KesVizCore;
using Fuzz::Check;
using Fuzz::Input;
using Fuzz::ModelNode;

/// A text for the explanation of a difference.
std::string shown(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t character : text) {
        const bool isPlain = character >= 0x20 && character < 0x7F;
        bytes += isPlain ? std::string(1, static_cast<char>(character))
                         : "<" + std::to_string(character) + ">";
    }
    return bytes;
}
std::string shown(const std::string& bytes) {
    return shown(Utils::StringToWstring(bytes));
}

template <typename Text>
void checkText(const Text& answered, const Text& expected, const char* what) {
    if (answered != expected) {
        Fuzz::Fail(std::string(what) + ": " + shown(answered) + ", expected " + shown(expected));
    }
}

std::wstring widened(const std::string& bytes) {
    std::wstring text;
    for (const char byte : bytes) {
        text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    }
    return text;
}

std::wstring upToZero(const std::wstring& text) {
    return text.substr(0, text.find(L'\0'));
}

std::string anyBytes(Input& input) {
    std::string bytes;
    for (unsigned left = input.Below(64); left > 0; --left) {
        bytes += static_cast<char>(input.Byte());
    }
    return bytes;
}

/// Short, or so long that buffers end.
std::wstring anyText(Input& input) {
    std::wstring text = input.Text(40);
    if (input.Below(16) == 0) {
        text.insert(0, 16U * input.Byte(), input.Flag() ? L'x' : L'\x20AC');
    }
    return text;
}

std::string printed(const char* format, double value) {
    std::string text(2000, '\0');
    text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), format, value)));
    return text;
}

// ---- Operations on texts

void checkConversions(Input& input) {
    const std::wstring text = anyText(input);
    const std::string bytes = anyBytes(input);
    checkText(Utils::WstringToString(text), Fuzz::narrow(text), "WstringToString");
    checkText(Utils::StringToWstring(bytes), widened(bytes), "StringToWstring");
    // cppcheck-suppress stlcstrParam ; up to the first zero, as Char2Wchar takes it
    checkText(std::wstring(Utils::Char2Wchar(bytes.c_str())), widened(bytes.c_str()), "Char2Wchar");

    const std::wstring traced = text.substr(0, 255);
    const std::string name = Fuzz::narrow(traced).c_str();
    const auto id = input.Any<std::uint64_t>();
    checkText(support::OpenBuilder::convertToString(text), name, "convertToString");
    checkText(support::OpenBuilder::getIdAndNameString(id, text), std::to_string(id) + " " + name,
              "getIdAndNameString");
}

void checkNumbers(Input& input) {
    const int number = input.Any<std::int32_t>();
    const auto id = input.Any<std::uint64_t>();
    checkText(Utils::IntToString(number), std::to_string(number), "IntToString");
    checkText(Utils::IntToWstring(number), std::to_wstring(number), "IntToWstring");
    checkText(Utils::uKesPtrIntToWstring(id), std::to_wstring(id), "uKesPtrIntToWstring");
    char hex[20];
    std::snprintf(hex, sizeof hex, "0x%llx", static_cast<long long>(number));
    checkText(Utils::IntToHexString(number), std::string(hex), "IntToHexString");
    std::snprintf(hex, sizeof hex, "0x%llx", static_cast<unsigned long long>(id));
    void* const pointer = reinterpret_cast<void*>(static_cast<std::uintptr_t>(id));
    checkText(Utils::PointerToHexString(pointer), std::string(hex), "PointerToHexString");
    checkText(support::OpenBuilder::getHexPointer(pointer), std::string(hex), "getHexPointer");

    static const char* const formats[] = {"%f", "%5.3f", "%.17g", "%e", "%a", "<%400.3f>"};
    char format[16];
    std::snprintf(format, sizeof format, "%s", formats[input.Below(6)]);
    const auto value = input.Any<double>();
    const std::string expected = printed(format, value);
    checkText(Utils::DoubleToWstring(value, format), widened(expected), "DoubleToWstring");
    checkText(Utils::SprintfL("%5.3f|%d|%400f", value, number, 1.0),
              (printed("%5.3f", value) + "|" + std::to_string(number) + "|" + printed("%400f", 1.0))
                  .substr(0, 1023),
              "SprintfL of numbers");
}

void checkFormatted(Input& input) {
    const std::wstring text = anyText(input);
    const std::string bytes = anyBytes(input) + Fuzz::narrow(text);
    checkText(Utils::SprintfL("<%s>", bytes.c_str()),
              ("<" + std::string(bytes.c_str()) + ">").substr(0, 1023), "SprintfL");
    checkText(Utils::SWprintfL(L"<%ls>%d", text.c_str(), 7),
              (L"<" + upToZero(text) + L">7").substr(0, 1023), "SWprintfL");

    // A wide text has a form in the locale "C", or the C library refuses the format.
    std::string expected = "[";
    for (const wchar_t character : upToZero(text)) {
        if (static_cast<std::uint32_t>(character) >= 0x80) {
            expected.clear();
            break;
        }
        expected += static_cast<char>(character);
    }
    checkText(Utils::SprintfL("[%ls", text.c_str()), expected.substr(0, 1023),
              "SprintfL of a wide text");
}

// ---- Paths

bool namesNoFile(const std::wstring& path) {
    return path.empty() || std::any_of(path.begin(), path.end(), [](wchar_t character) {
               const auto code = static_cast<std::uint32_t>(character);
               return code == 0 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
           });
}

std::wstring fullPath(const std::wstring& path) {
    if (namesNoFile(path)) {
        return {};
    }
    const std::wstring whole =
        path[0] == L'/' ? path : std::filesystem::current_path().wstring() + L"/" + path;
    std::vector<std::wstring> pieces;
    std::wstring piece;
    for (const wchar_t character : whole + L"/") {
        if (character != L'/') {
            piece += character;
            continue;
        }
        if (piece == L"..") {
            pieces.resize(pieces.empty() ? 0 : pieces.size() - 1);
        } else if (!piece.empty() && piece != L".") {
            pieces.push_back(piece);
        }
        piece.clear();
    }
    std::wstring full;
    for (const std::wstring& part : pieces) {
        full += L"/" + part;
    }
    if (full.empty() || path.back() == L'/') {
        full += L"/";
    }
    return full.size() > 255 ? std::wstring() : full;
}

void checkPaths(Input& input) {
    std::wstring path;
    for (unsigned left = input.Below(24); left > 0; --left) {
        static const wchar_t* const parts[] = {L"/", L"..", L".", L"folder", L"/../", L"x.tar"};
        const unsigned part = input.Below(8);
        path += part < 6 ? std::wstring(parts[part]) : input.Text(4);
    }
    if (input.Below(8) == 0) {
        path += std::wstring(input.Byte(), L'n');
    }
    const std::wstring full = fullPath(path);
    const std::size_t end = full.rfind(L'/');
    checkText(Utils::GetAbsolutePath(path), full.empty() ? full : full.substr(0, end),
              "GetAbsolutePath");
    checkText(Utils::GetFileNameOnly(path), full.empty() ? full : full.substr(end + 1),
              "GetFileNameOnly");
    const std::size_t dot = path.rfind(L'.');
    checkText(Utils::GetFileExtension(path),
              dot == std::wstring::npos ? std::wstring() : path.substr(dot + 1),
              "GetFileExtension");
    if (namesNoFile(path)) {
        Check(Utils::FileExists(path), "FileExists of what names no file");
        Check(Utils::GetFileContents(path).empty(), "GetFileContents of what names no file");
    }
}

// ---- Reports

using Calls = std::vector<std::wstring>;

/// Writes down each call with all that it was given.
class RecordingReport : public AReport {
public:
    mutable Calls calls;
    bool answer = false;

    using AReport::assertNotDefined;

protected:
    void start(std::string name) override { write(L"start", name); }
    void end() override { calls.emplace_back(L"end"); }
    void openElement(std::string name) override { write(L"open", name); }
    void closeElement() override { calls.emplace_back(L"close"); }
    void addAttribute(std::string name, bool value) override {
        write(L"bool", name, value ? L"true" : L"false");
    }
    void addAttribute(std::string name, std::uint64_t value) override {
        write(L"number", name, std::to_wstring(value));
    }
    void addAttribute(std::string name, std::wstring value) override {
        write(L"text", name, value);
    }
    void addAttribute(std::string name, double value) override {
        write(L"double", name, std::to_wstring(value));
    }
    void addComment(std::wstring comment) override { calls.push_back(L"comment|" + comment); }
    void addText(std::wstring text) override { calls.push_back(L"content|" + text); }
    std::wstring toText() const override { return L"all"; }
    bool saveTo(std::wstring path) const override {
        calls.push_back(L"save|" + path);
        return answer;
    }
    bool restore(std::wstring path) override {
        calls.push_back(L"restore|" + path);
        return answer;
    }
    bool compare(const AReport& other, std::wstring& difference,
                 std::string& detail) const override {
        difference = L"difference";
        detail = other.GetName();
        return answer;
    }

private:
    void write(const std::wstring& call, const std::string& name,
               const std::wstring& value = std::wstring()) {
        calls.push_back(call + L"|" + widened(name) + L"|" + value);
    }
};

void checkCalls(const Calls& calls, const Calls& expected, const char* what) {
    for (std::size_t place = 0; place < std::max(calls.size(), expected.size()); ++place) {
        const std::wstring end = L"(end)";
        checkText(place < calls.size() ? calls[place] : end,
                  place < expected.size() ? expected[place] : end, what);
    }
}

/// The life of a report: what is refused, by which message, and what reaches the subclass.
class ReportLife {
public:
    void Run(Input& input) {
        for (unsigned left = input.Below(16); left > 0; --left) {
            call(input);
            Check(_report.IsDefined() == _isDefined, "IsDefined");
            checkText(_report.GetName(), _name, "GetName of a report");
            checkCalls(_report.calls, _expected, "call of a report");
        }
    }

private:
    static constexpr const char* kFinalized = "Report has been finalized, can't add content";
    static constexpr const char* kIncomplete = "Report has not been completed";

    /// @p operation must throw @p message where @p isRefused.
    template <typename Operation>
    static void check(bool isRefused, const char* message, Operation operation) {
        std::string thrown;
        try {
            operation();
        } catch (const std::runtime_error& error) {
            thrown = error.what();
        }
        checkText(thrown, std::string(isRefused ? message : ""), "message of a report");
    }

    template <typename Operation>
    void content(const std::wstring& expected, Operation operation) {
        check(_isDefined, kFinalized, operation);
        if (!_isDefined) {
            _expected.push_back(expected);
        }
    }

    void call(Input& input) {
        const std::string name = anyBytes(input);
        const std::wstring wideName = widened(name);
        const std::wstring text = anyText(input);
        _report.answer = input.Flag();
        switch (input.Below(12)) {
            case 0:
                content(L"start|" + wideName + L"|", [&] { _report.StartReport(name); });
                _name = _isDefined ? _name : name;
                break;
            case 1:
                content(L"open|" + wideName + L"|", [&] { _report.OpenElement(name); });
                break;
            case 2:
                content(L"close", [&] { _report.CloseElement(); });
                break;
            case 3:
                content(L"text|" + wideName + L"|" + text,
                        [&] { _report.AddAttribute(name, text); });
                break;
            case 4:
                addNumber(input, name);
                break;
            case 5:
                content(L"content|" + text, [&] { _report.AddText(text); });
                break;
            case 6:
                content(L"comment|" + text, [&] { _report.AddComment(text); });
                break;
            case 7:
                if (input.Below(4) == 0) {
                    content(L"end", [&] { _report.EndReport(); });
                    _isDefined = true;
                }
                break;
            case 8:
                if (input.Below(4) == 0) {
                    content(L"restore|" + text, [&] {
                        Check(_report.Restore(text) == _report.answer, "answer of Restore");
                    });
                    _isDefined = true;
                }
                break;
            default:
                readBack(input, text);
        }
    }

    void addNumber(Input& input, const std::string& name) {
        const std::wstring wideName = widened(name);
        const auto number = input.Any<std::uint64_t>();
        const auto value = input.Any<double>();
        const bool flag = input.Flag();
        content(L"number|" + wideName + L"|" + std::to_wstring(number),
                [&] { _report.AddAttribute(name, number); });
        content(L"double|" + wideName + L"|" + std::to_wstring(value),
                [&] { _report.AddAttribute(name, value); });
        content(L"bool|" + wideName + (flag ? L"|true" : L"|false"),
                [&] { _report.AddAttribute(name, flag); });
    }

    void readBack(Input& input, const std::wstring& path) {
        switch (input.Below(3)) {
            case 0:
                check(!_isDefined, kIncomplete,
                      [&] { checkText(_report.ToText(), std::wstring(L"all"), "ToText"); });
                break;
            case 1:
                check(!_isDefined, kIncomplete,
                      [&] { Check(_report.SaveTo(path) == _report.answer, "answer of SaveTo"); });
                if (_isDefined) {
                    _expected.push_back(L"save|" + path);
                }
                break;
            default: {
                std::wstring difference;
                std::string detail;
                check(!_isDefined, "Report is not complete", [&] {
                    Check(_report.Compare(_report, difference, detail) == _report.answer,
                          "answer of Compare");
                });
                checkText(difference, std::wstring(_isDefined ? L"difference" : L""), "Compare");
                checkText(detail, _isDefined ? _name : std::string(), "Compare");
            }
        }
    }

    RecordingReport _report;
    Calls _expected;
    std::string _name;
    bool _isDefined = false;
};

// ---- Nodes with any names

/// Tells as its text what the report of a node must hold of it.
class NamedNodes {
public:
    NamedNodes()
        : _graph(
              _model, [this](Attribute* attribute) { return _texts.at(attribute); },
              [](AGeometryItem* item) { return std::to_string(item->ID()) + item->ToString(); }) {
        _graph.Adopt(_adapter._rootNode);
        _model[0].name = L"ROOT";
        _adapter.ownsRoot = false;
    }
    ~NamedNodes() { _graph.DestroyAll(); }
    NamedNodes(const NamedNodes&) = delete;
    NamedNodes& operator=(const NamedNodes&) = delete;

    void Run(Input& input) {
        for (unsigned left = input.Below(16); left > 0; --left) {
            change(input);
        }
        _graph.CheckAll();
        std::string expected;
        std::string text;
        _model.Dump(0, expected);
        _adapter.GetSceneStructure(text, true);
        checkText(text, expected, "dump");
        checkReport(0);
        checkReport(anyNode(input));
    }

private:
    int anyNode(Input& input) const { return static_cast<int>(input.Below(256)) % _graph.Count(); }

    void change(Input& input) {
        const int node = anyNode(input);
        switch (input.Below(6)) {
            case 0:
            case 1:
                addChild(input, node);
                break;
            case 2:
                _model[node].name = anyText(input);
                _graph[node]->SetName(_model[node].name);
                break;
            case 3:
                addItem(input, node);
                break;
            case 4:
                share(node, anyNode(input));
                break;
            default:
                setAttribute(input, node);
        }
    }

    void addChild(Input& input, int parent) {
        const std::uint64_t id = input.Flag() ? input.Below(16) : input.Any<std::uint64_t>();
        if (!_model[parent].isGroup || _model.Child(parent, id) >= 0) {
            return;
        }
        GeoNode* const child = input.Below(4) == 0 ? _graph.Group(parent)->CreateGeoChild(id)
                                                   : _graph.Group(parent)->CreateChild(id);
        const int number = _graph.Adopt(child);
        _model.AddChild(parent, number);
        const bool isTwin = input.Flag();
        _model[number].name = isTwin ? _model[parent].name : anyText(input);
        child->SetName(_model[number].name);
    }

    void share(int parent, int child) {
        if (_model[parent].isGroup && !_model.IsAbove(child, parent)) {
            Check(_graph.Group(parent)->AddChild(_graph[child]) == _model.AddChild(parent, child),
                  "AddChild");
        }
    }

    void addItem(Input& input, int node) {
        const auto id = input.Any<std::uint64_t>();
        static float point[3] = {};
        AGeometryItem* item = nullptr;
        std::string kind;
        if (input.Flag()) {
            item = support::newItem(id);
            kind = "Vertex";
        } else {
            const std::wstring text = anyText(input);
            item = new support::TellingItem<AGeometryItemText>(nullptr, id, text, text, point,
                                                               FontAttr(), 1.0F);
            kind = "Text";
        }
        _graph[node]->AddGeometry(item);
        _model[node].items.push_back({id, std::to_string(id), kind});
    }

    /// The text of an attribute is what the report says of it, each call ended by a line break.
    void setAttribute(Input& input, int node) {
        const RGBAColor color(input.Byte(), input.Byte(), input.Byte(), input.Byte());
        const std::string channels =
            std::to_string(color.GetRed()) + "," + std::to_string(color.GetGreen()) + "," +
            std::to_string(color.GetBlue()) + "," + std::to_string(color.GetAlpha());
        switch (input.Below(5)) {
            case 0:
                set(node, new AttributeColor(color, input.Flag()),
                    "text|Type|Color\ntext|Color|" + channels);
                break;
            case 1:
                set(node, new AttributeHighlight(color),
                    "text|Type|Highlight\ntext|OriginalColor|" + channels);
                break;
            case 2: {
                const bool visible = input.Flag();
                set(node, new AttributeVisibility(visible),
                    std::string("text|Type|Visibility\nbool|Value|") +
                        (visible ? "true" : "false"));
                break;
            }
            case 3:
                setMatrix(input, node);
                break;
            default:
                set(node, new AttributeLineStyle(1, anyBytes(input)), "content|Type is Unknown");
        }
    }

    void setMatrix(Input& input, int node) {
        double matrix[16];
        const bool isAny = input.Flag();
        std::string text = " = [ ";
        for (int place = 0; place < 16; ++place) {
            matrix[place] = isAny ? input.Any<double>() : static_cast<double>(input.Byte()) / 7;
            text += place == 0 ? "" : place % 4 == 0 ? ",  " : ", ";
            text += printed("%5.3f", matrix[place]);
        }
        set(node, new AttributeTransform(matrix),
            "text|Type|Transform\ntext|Matrix|" + (text + "]").substr(0, 1023));
    }

    void set(int node, Attribute* attribute, const std::string& text) {
        Check(_graph[node]->SetAttribute(attribute), "SetAttribute");
        _texts[attribute] = text;
        _model[node].SetAttribute({attribute->GetType(), text});
    }

    void checkReport(int node) {
        if (_model.Steps(node, 500) >= 500) {
            return;
        }
        RecordingReport report;
        Check(_graph[node]->GetReport(report), "GetReport");
        Calls expected;
        appendReport(node, expected);
        checkCalls(report.calls, expected, "report of a node");
    }

    void appendReport(int number, Calls& calls) const {
        const ModelNode& node = _model[number];
        calls.emplace_back(node.isGroup ? L"open|Node|" : L"open|GeoNode|");
        appendIdAndName(node, calls);
        for (const Fuzz::ModelItem& item : node.items) {
            calls.emplace_back(L"open|Geometry|");
            calls.push_back(L"number|ID|" + widened(item.name));
            calls.push_back(L"text|Type|" + widened(item.color));
            calls.emplace_back(L"close");
        }
        for (const Fuzz::ModelAttribute& attribute : node.attributes) {
            appendAttribute(attribute, calls);
        }
        for (const int parent : node.parents) {
            calls.emplace_back(L"open|Parent|");
            appendIdAndName(_model[parent], calls);
            calls.emplace_back(L"close");
        }
        std::map<std::wstring, int> byName;
        for (const auto& [id, child] : node.children) {
            byName.emplace(_model[child].name, child);
        }
        for (const auto& [name, child] : byName) {
            appendReport(child, calls);
        }
        calls.emplace_back(L"close");
    }

    static void appendIdAndName(const ModelNode& node, Calls& calls) {
        calls.push_back(L"number|ID|" + std::to_wstring(node.id));
        calls.push_back(L"text|Name|" + node.name);
    }

    static void appendAttribute(const Fuzz::ModelAttribute& attribute, Calls& calls) {
        calls.emplace_back(L"open|Attribute|");
        if (attribute.type == AttributeType::LineStyle) {
            calls.emplace_back(L"content|Type is Unknown\n");
        } else {
            const std::wstring text = widened(attribute.text);
            const std::size_t end = text.find(L'\n');
            calls.push_back(text.substr(0, end));
            calls.push_back(text.substr(end + 1));
        }
        calls.emplace_back(L"close");
    }

    support::RecordingAdapter _adapter;
    std::map<Attribute*, std::string> _texts;
    Fuzz::GraphModel _model;
    Fuzz::Graph _graph;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Check(std::setlocale(LC_ALL, input.Flag() ? "C.UTF-8" : "C") != nullptr, "a locale is missing");
    while (!input.IsAtEnd()) {
        switch (input.Below(6)) {
            case 0:
                checkConversions(input);
                break;
            case 1:
                checkNumbers(input);
                break;
            case 2:
                checkFormatted(input);
                break;
            case 3:
                checkPaths(input);
                break;
            case 4:
                ReportLife().Run(input);
                break;
            default:
                NamedNodes().Run(input);
        }
    }
    return 0;
}
