#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/standard_output.h"
#include "report/batch_report.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <new>
#include <sstream>
#include <string>

namespace ozm::tool {
namespace {

constexpr const char* kFooter = R"(Examples:
  ozmira render icon.svg --width 24 --scale 1,2,3
  ozmira render icons/ -o pictures/
  ozmira check icons/
  ozmira conform icons/ -o conforming/
  ozmira info icon.svg
  ozmira dump --json icon.svg

'ozmira COMMAND --help' tells more about a command.
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

/// Prints the help or the version, whichever was asked for.
int PrintHelpOrVersion(const CLI::App& tool, const CLI::Success& request) {
    std::ostringstream text;
    tool.exit(request, text, text);
    StandardOutput output;
    output.Write(text.str());
    output.Flush();
    return kExitSuccess;
}

int Run(CLI::App& tool, int argumentCount, char** arguments) {
    Action action;
    tool.require_subcommand(0, 1);
    tool.set_version_flag("--version", "ozmira " OZMIRA_TOOL_VERSION, "Print the version and exit");
    tool.footer(kFooter);
    AddRenderCommand(tool, action);
    AddInfoCommand(tool, action);
    AddDumpCommand(tool, action);
    AddCheckCommand(tool, action);
    AddConformCommand(tool, action);
    try {
        tool.parse(argumentCount, arguments);
        if (!action) throw UsageError("a command is missing: render, check, conform, info or dump");
        return action();
    } catch (const CLI::Success& request) {
        return PrintHelpOrVersion(tool, request);
    } catch (const CLI::Error& error) {
        return PrintUsageProblem(tool, error.what());
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
