#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/input_file.h"
#include "files/output_plan.h"
#include "files/standard_output.h"
#include "report/batch_report.h"
#include "report/finding_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

struct CheckOptions {
    std::vector<std::string> inputs;
};

constexpr const char* kFooter = R"(Prints FILE:LINE:COLUMN: SEVERITY: what is different; what to do [RULE]. An error
means that nothing can be drawn, a warning that something is drawn otherwise than in
a browser; a note is worth knowing.

Exit status: 0 no error and no warning, 1 some, 2 wrong usage.

Examples:
  ozmira check icon.svg
  ozmira check icons/
)";

int Check(const CheckOptions& options) {
    StandardOutput output;
    bool isClean = true;
    for (const IconPlan& icon : ListInputs(options.inputs)) {
        try {
            if (!icon.problem.empty()) throw FileError(icon.problem);
            for (const conform::Finding& finding : conform::Check(ReadInput(icon.source))) {
                if (finding.severity != conform::Severity::Note) isClean = false;
                output.Write(DescribeFinding(icon.source, finding) + "\n");
            }
        } catch (const FileError& error) {
            isClean = false;
            PrintProblem(InputName(icon.source) + ": " + error.what());
        }
    }
    output.Flush();
    return isClean ? kExitSuccess : kExitFailure;
}

} // namespace

void AddCheckCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = tool.add_subcommand("check", "Name what is drawn otherwise than in a browser");
    command->add_option("FILE", options->inputs, "Files or folders to check; - is standard input")
        ->required()
        ->type_name("");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Check(*options); }; });
}

} // namespace ozm::tool
