#include "commands/CommandLine.h"

#include "commands/CheckCommand.h"
#include "commands/DiffCommand.h"
#include "commands/Errors.h"
#include "commands/Failures.h"
#include "commands/InfoCommand.h"
#include "commands/NearNames.h"
#include "commands/OptionParsers.h"
#include "commands/PickCommand.h"
#include "commands/PmiCommand.h"
#include "commands/RenderCommand.h"
#include "commands/ReportCommand.h"
#include "commands/TreeCommand.h"
#include "commands/ViewsCommand.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <set>
#include <utility>

namespace kesview {

namespace {

constexpr const char* kVersion = "kesview " KESVIEW_VERSION;

constexpr const char* kEpilogue =
    "Selectors: a name with * and ?, a path \"/Gearbox/Shaft/Bolt*\", a render id \"1/12/44\", an\n"
    "entity id \"face:12\" (also instance, product, body, edge, annotation, view), a key "
    "\"#4711\".\n"
    "Exit codes: 0 done, 1 findings or differences, 2 usage, 3 unreadable or not writable,\n"
    "4 unknown format, 5 damaged, 6 cannot draw here, 7 limit reached, 130 interrupted.";

/// What the arguments turned out to ask for.
using Run = std::function<ExitCode(const Tools&, Streams&)>;

class CommandLine {
public:
    CommandLine()
        : _app("Reads CAD files (STEP, IGES, BREP, STL), says what they hold and draws it.") {
        _app.name("kesview");
        _app.set_version_flag("--version", kVersion, "Print the version");
        _app.set_help_flag("-h,--help", "Print this help");
        _app.get_formatter()->column_width(34);
        _app.get_formatter()->label("SUBCOMMAND", "VERB");
        _app.require_subcommand(1);
        _app.footer(std::string("Each verb tells more: kesview VERB --help\n\n") + kEpilogue);
        addVerbs();
    }

    CLI::App& App() { return _app; }
    const Run& Chosen() const { return _run; }

private:
    template <typename Options>
    CLI::App& addVerb(const std::string& name, const std::string& description,
                      const std::string& examples, std::shared_ptr<Options> options,
                      ExitCode (*verb)(const Options&, const Tools&, Streams&)) {
        CLI::App& app = *_app.add_subcommand(name, description);
        app.group("Verbs");
        app.footer("Examples:\n" + examples + "\n" + kEpilogue);
        app.callback([this, options, verb] {
            _run = [options, verb](const Tools& tools, Streams& streams) {
                if (tools.limitTime) {
                    tools.limitTime(options->timeLimit);
                }
                return verb(*options, tools, streams);
            };
        });
        addCommonOptions(app, *options);
        return app;
    }

    void addVerbs();
    void addTree();
    void addPmi();
    void addRender();
    void addPick();
    void addReport();
    void addDiff();

    CLI::App _app;
    Run _run;
};

void CommandLine::addTree() {
    auto options = std::make_shared<TreeOptions>();
    CLI::App& app = addVerb("tree", "The assembly: names, kinds, render ids and instance paths",
                            "  kesview tree gearbox.stp --depth 2\n"
                            "  kesview tree gearbox.stp --faces --format json\n"
                            "  kesview tree gearbox.stp --scene\n",
                            options, tree);
    app.add_option("--depth", options->depth, "Show so many levels of instances")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""))
        ->type_name("LEVELS");
    app.add_flag("--faces", options->faces, "Show faces and edges as well");
    app.add_flag("--scene", options->scene, "Print the structure of the scene instead");
}

void CommandLine::addPmi() {
    auto options = std::make_shared<PmiOptions>();
    CLI::App& app = addVerb("pmi", "Annotations: what they say, speak of, and where they are seen",
                            "  kesview pmi bracket.stp\n"
                            "  kesview pmi bracket.stp --semantic\n"
                            "  kesview pmi bracket.stp --of face:12\n",
                            options, pmi);
    app.add_flag("--semantic", options->semantic, "Print the semantic records as well");
    app.add_option("--of", options->of, "Only those that speak of what is selected")
        ->check(notEmpty())
        ->type_name("SELECTOR");
}

void CommandLine::addRender() {
    auto options = std::make_shared<RenderOptions>();
    CLI::App& app =
        addVerb("render", "Draw a picture into a PNG file; needs no display",
                "  kesview render bracket.stp -o bracket.png\n"
                "  kesview render bracket.stp -o top.png --view \"Top view\" --size 800x600\n"
                "  kesview render gearbox.stp -o in.png --section x=10 --hide \"Housing*\"\n"
                "  kesview render gearbox.stp -o bolt.png --isolate 1/12/44 --highlight face:12\n",
                options, render);
    app.add_option("-o,--output", options->output, "The PNG file to write")
        ->required()
        ->check(notEmpty())
        ->type_name("PNG");
    app.add_option("--background", options->background,
                   "white, black, grey, #rrggbb, or two from the bottom up (white)")
        ->type_name("COLOUR[,COLOUR]");
    addSceneOptions(app, options->scene);
}

void CommandLine::addPick() {
    auto options = std::make_shared<PickOptions>();
    CLI::App& app = addVerb("pick", "What is seen at a pixel, and the PMI that speaks of it",
                            "  kesview pick bracket.stp --at 800,500\n"
                            "  kesview pick bracket.stp --at 10,20 --view top --size 640x480\n",
                            options, pick);
    app.add_option_function<std::string>(
           "--at", [options](const std::string& text) { parsePixel(text, options->x, options->y); },
           "The pixel, from the upper left corner")
        ->required()
        ->type_name("X,Y");
    addSceneOptions(app, options->scene);
}

void CommandLine::addReport() {
    auto options = std::make_shared<ReportOptions>();
    CLI::App& app = addVerb("report", "The scene as an XML report, for keeping and comparing",
                            "  kesview report bracket.stp\n"
                            "  kesview report bracket.stp -o bracket.xml\n",
                            options, report);
    app.add_option("-o,--output", options->output, "Write it into this file")
        ->check(notEmpty())
        ->type_name("XML");
}

void CommandLine::addDiff() {
    auto options = std::make_shared<DiffOptions>();
    CLI::App& app =
        addVerb("diff", "In what two scenes differ, each a report or a CAD file; exit code 1 if so",
                "  kesview diff bracket.xml bracket.stp\n"
                "  kesview diff old.stp new.stp --format json\n",
                options, diff);
    app.get_option("FILE")->description("The older one, a report or a CAD file");
    app.add_option("OTHER", options->other, "The newer one, a report or a CAD file")
        ->required()
        ->type_name("");
}

void CommandLine::addVerbs() {
    addVerb("info", "What a file holds: units, box, counts, colours, PMI, what was lost",
            "  kesview info bracket.stp\n"
            "  kesview info bracket.stp --format json --time\n",
            std::make_shared<InfoOptions>(), info);
    addTree();
    addPmi();
    addVerb("views", "The saved views: camera, window, members, clipping",
            "  kesview views bracket.stp\n", std::make_shared<ViewsOptions>(), views);
    addRender();
    addPick();
    addReport();
    addDiff();
    addVerb("check", "What is broken or was lost, worst first; exit code 1 if anything is",
            "  kesview check bracket.stp && echo sound\n", std::make_shared<CheckOptions>(), check);
}

void refuseUnknownVerb(CLI::App& app, const std::vector<std::string>& arguments) {
    static const std::set<std::string> known = {"-h", "--help", "--version"};
    if (arguments.empty() || arguments.front().substr(0, 1) == "-") {
        if (arguments.empty() || known.count(arguments.front()) == 0) {
            throw UsageError(
                "a verb comes first: kesview VERB [options] FILE. \"kesview --help\" lists them.");
        }
        return;
    }
    std::set<std::string> verbs;
    for (const CLI::App* verb : app.get_subcommands([](CLI::App*) { return true; })) {
        verbs.insert(verb->get_name());
    }
    const std::string& verb = arguments.front();
    if (verbs.count(verb) == 0) {
        const std::string advice = didYouMean(nearNames(verb, verbs));
        throw UsageError("\"" + verb + "\" is no verb." +
                         (advice.empty() ? " \"kesview --help\" lists them." : advice));
    }
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

ExitCode parseAndRun(const std::vector<std::string>& arguments, const Tools& tools,
                     Streams& streams) {
    CommandLine line;
    refuseUnknownVerb(line.App(), arguments);
    try {
        std::vector<std::string> backwards(arguments.rbegin(), arguments.rend());
        line.App().parse(std::move(backwards));
    } catch (const CLI::Success& help) {
        line.App().exit(help, streams.out, streams.err);
        return ExitCode::Done;
    } catch (const CLI::ParseError& error) {
        throw UsageError(firstLine(error.what()) +
                         ". \"kesview --help\" and \"kesview VERB --help\" "
                         "tell more.");
    }
    return line.Chosen()(tools, streams);
}

}  // namespace

ExitCode runKesview(const std::vector<std::string>& arguments, const Tools& tools,
                    Streams& streams) {
    return answerFailures(streams, [&] { return parseAndRun(arguments, tools, streams); });
}

}  // namespace kesview
