#include "base/errors.h"
#include "base/suggestion.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/standard_output.h"
#include "report/batch_report.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

constexpr const char* kFooter = R"(Examples:
  ozmira render icon.svg --width 24 --scale 1,2,3
  ozmira render icons/ -o pictures/
  ozmira check icons/
  ozmira conform icons/ -o conforming/
  ozmira catalogue icons/ -o Icons.xcassets
  ozmira report icons/ -o report.html
  ozmira diff old/ new/
  ozmira info icon.svg
  ozmira dump --json icon.svg

'ozmira COMMAND --help' tells more about a command. What is drawn differently
from a browser, share/doc/ozmira/differences.md explains, which is installed
beside the tool.
)";

/// "ozmira", followed by the sub-command if one was given.
std::string CommandLine(const CLI::App& tool) {
    const auto commands = tool.get_subcommands();
    return tool.get_name() + (commands.empty() ? "" : " " + commands.front()->get_name());
}

int PrintUsageProblem(const CLI::App& tool, const std::string& problem) {
    PrintProblem(OnOneLine(problem) + "; see '" + CommandLine(tool) + " --help'");
    return kExitUsage;
}

std::vector<std::string> CommandNames(const CLI::App& tool) {
    std::vector<std::string> names;
    for (const CLI::App* command : tool.get_subcommands({})) names.push_back(command->get_name());
    return names;
}

std::vector<std::string> OptionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
}

/// "render, check or dump".
std::string Alternatives(const std::vector<std::string>& names) {
    std::string list;
    for (size_t i = 0; i < names.size(); ++i) {
        list += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
    }
    return list;
}

/// Arguments that no option and no command takes.
std::string DescribeExtras(const CLI::App& tool, const std::string& message) {
    const auto commands = tool.get_subcommands();
    const CLI::App& app = commands.empty() ? tool : *commands.front();
    std::vector<std::string> extras = tool.remaining(true);
    const auto isOption = [](const std::string& argument) { return argument.starts_with('-'); };
    const auto option = std::find_if(extras.begin(), extras.end(), isOption);
    if (option != extras.end()) {
        const std::string meant = Suggest(option->substr(0, option->find('=')), OptionNames(app));
        return "there is no option " + *option + (meant.empty() ? "" : "; did you mean " + meant + "?");
    }
    if (!commands.empty() || extras.empty()) return message;
    const std::string meant = Suggest(extras.front(), CommandNames(tool));
    return "there is no command \"" + extras.front() + "\"; " +
           (meant.empty() ? "there are " + Alternatives(CommandNames(tool)) : "did you mean " + meant + "?");
}

/// What the library for the command line found wrong.
std::string DescribeParseError(const CLI::App& tool, const CLI::Error& error) {
    std::string message = error.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&error)) return DescribeExtras(tool, message);
    if (const size_t at = message.find(": At Most 1 required"); at != message.npos) {
        return message.substr(0, at) + ": given more than once; give it once";
    }
    return message;
}

/// Prints the help or the version, whichever was asked for.
int PrintHelpOrVersion(const CLI::App& tool, const CLI::Success& request) {
    std::ostringstream text;
    tool.exit(request, text, text);
    PrintText(text.str());
    return kExitSuccess;
}

int Run(CLI::App& tool, int argumentCount, char** arguments) {
    Action action;
    tool.require_subcommand(0, 1);
    tool.set_version_flag("--version", "ozmira " OZMIRA_TOOL_VERSION, "Print the version and exit");
    tool.footer(kFooter);
    AddRenderCommand(tool, action);
    AddCheckCommand(tool, action);
    AddConformCommand(tool, action);
    AddReportCommand(tool, action);
    AddCatalogueCommand(tool, action);
    AddDiffCommand(tool, action);
    AddInfoCommand(tool, action);
    AddDumpCommand(tool, action);
    try {
        tool.parse(argumentCount, arguments);
        if (!action) throw UsageError("a command is missing: " + Alternatives(CommandNames(tool)));
        return action();
    } catch (const CLI::Success& request) {
        return PrintHelpOrVersion(tool, request);
    } catch (const CLI::Error& error) {
        return PrintUsageProblem(tool, DescribeParseError(tool, error));
    } catch (const UsageError& error) {
        return PrintUsageProblem(tool, error.what());
    }
}

} // namespace
} // namespace ozm::tool

int main(int argumentCount, char** arguments) {
    // A write to a closed pipe, or beyond the file size limit, then fails like any other write.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        CLI::App tool("Draws SVG icons, and shows what is in them.", "ozmira");
        return ozm::tool::Run(tool, argumentCount, arguments);
    } catch (const std::bad_alloc&) {
        ozm::tool::PrintProblem("there is not enough memory");
    } catch (const std::exception& error) {
        ozm::tool::PrintProblem(error.what());
    }
    return ozm::tool::kExitFailure;
}
