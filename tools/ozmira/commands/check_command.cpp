#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/input_file.h"
#include "files/output_plan.h"
#include "files/standard_output.h"
#include "report/batch_report.h"
#include "report/finding_json.h"
#include "report/finding_text.h"
#include "report/json_writer.h"
#include "report/sarif_writer.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

struct CheckOptions {
    std::vector<std::string> inputs;
    bool json = false, sarif = false, gitHub = false, rules = false;
};

constexpr const char* kFooter =
    R"(Prints FILE:LINE:COLUMN: SEVERITY: what is different; what to do [RULE], and for
several files a summary by rule. An error means that nothing can be drawn, a
warning that something is drawn differently from a browser; a note is worth
knowing, but nothing looks different. The rules are explained in
share/doc/ozmira/differences.md, which is installed beside the tool.

Exit status: 0 no error and no warning, 1 some, 2 wrong usage.

Examples:
  ozmira check icon.svg
  ozmira check icons/
  ozmira check --json icons/ | jq '.[].findings[].rule'
  ozmira check --sarif icons/ > ozmira.sarif
  ozmira check --github icons/        Annotations in a workflow of GitHub's
  ozmira check --rules                Every rule, with what to do about it
)";

/// The findings about one input. A file that can't be read has one.
std::vector<conform::Finding> FindingsOf(const IconPlan& icon) {
    std::string problem = icon.problem;
    if (problem.empty()) {
        try {
            return conform::Check(ReadInput(icon.source));
        } catch (const FileError& error) {
            problem = error.what();
        }
    }
    conform::Finding finding;
    finding.rule = kUnreadableRule;
    finding.severity = conform::Severity::Error;
    finding.message = problem;
    finding.remedy = "name a drawing that can be read";
    finding.isConvertible = false;
    return {finding};
}

void WriteSummary(StandardOutput& output, const FindingCounts& counts) {
    output.Write(FormatCount(counts.DifferentFiles()) + " of " + CountOf(counts.Files(), "file") +
                 (counts.DifferentFiles() == 1 ? " differs" : " differ") + " from a browser's picture\n");
    counts.ForEachRule([&](std::string_view rule, std::string_view remedy, uint64_t files, uint64_t places) {
        std::string line = "  " + CountOf(files, "file") + ", " + CountOf(places, "place");
        line.resize(std::max<size_t>(line.size(), 32), ' ');
        output.Write(line + std::string(rule) + ": " + std::string(remedy) + "\n");
    });
}

/// Lines for people.
void WriteLines(StandardOutput& output, const IconPlan& icon, std::span<const conform::Finding> findings) {
    for (const conform::Finding& finding : findings) {
        if (finding.rule == kUnreadableRule) {
            PrintProblem(InputName(icon.source) + ": " + finding.message);
        } else {
            output.Write(DescribeFinding(icon.source, finding) + "\n");
        }
    }
}

void WriteFile(JSONWriter& json, const std::string& file, std::span<const conform::Finding> findings) {
    json.Object([&] {
        json.Member("file", file);
        json.Key("findings");
        json.Array([&] {
            for (const conform::Finding& finding : findings) WriteJSON(json, finding);
        });
    });
}

int ListRules(const CheckOptions& options) {
    StandardOutput output;
    JSONWriter json(output);
    const auto writeRules = [&] {
        for (const conform::RuleInfo& rule : conform::Rules()) {
            if (options.json) {
                json.Object([&] {
                    json.Member("rule", rule.id);
                    json.Member("severity", conform::SeverityName(rule.severity));
                    json.Member("message", rule.message);
                    json.Member("remedy", rule.remedy);
                    json.Member("rewritten", rule.isConvertible);
                });
            } else {
                output.Write(std::string(rule.id) + " (" + std::string(conform::SeverityName(rule.severity)) +
                             (rule.isConvertible ? ", rewritten by conform" : ", not rewritten") + ")\n    " +
                             std::string(rule.message) + "; " + std::string(rule.remedy) + "\n");
            }
        }
    };
    if (options.json) {
        json.Array(writeRules);
        output.Put('\n');
    } else {
        writeRules();
    }
    output.Flush();
    return kExitSuccess;
}

int Check(const CheckOptions& options) {
    if (options.rules) return ListRules(options);
    if (options.inputs.empty()) throw UsageError("FILE is required");
    const std::vector<IconPlan> icons = ListInputs(options.inputs);
    StandardOutput output;
    JSONWriter json(output);
    FindingCounts counts;
    const auto forEachFile = [&](auto write) {
        for (const IconPlan& icon : icons) {
            const std::vector<conform::Finding> findings = FindingsOf(icon);
            counts.Add(findings);
            write(icon, findings);
        }
    };
    if (options.json) {
        json.Array([&] {
            forEachFile(
                [&](const IconPlan& icon, const auto& findings) { WriteFile(json, icon.source, findings); });
        });
        output.Put('\n');
    } else if (options.sarif) {
        WriteSARIF(json, [&](const FindingSink& sink) {
            forEachFile([&](const IconPlan& icon, const auto& findings) { sink(icon.source, findings); });
        });
        output.Put('\n');
    } else if (options.gitHub) {
        forEachFile([&](const IconPlan& icon, const auto& findings) {
            for (const auto& finding : findings) output.Write(GitHubAnnotation(icon.source, finding) + "\n");
        });
    } else {
        forEachFile([&](const IconPlan& icon, const auto& findings) { WriteLines(output, icon, findings); });
        if (icons.size() > 1) WriteSummary(output, counts);
    }
    output.Flush();
    return counts.DifferentFiles() == 0 ? kExitSuccess : kExitFailure;
}

} // namespace

void AddCheckCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = tool.add_subcommand("check", "List what a browser draws differently");
    command->add_option("FILE", options->inputs, "Files or folders to check; - is standard input")
        ->type_name("");
    CLI::Option* const json = command->add_flag("--json", options->json, "Print JSON");
    CLI::Option* const sarif =
        command->add_flag("--sarif", options->sarif, "Print a SARIF log, version 2.1.0");
    CLI::Option* const gitHub = command->add_flag("--github", options->gitHub, "Print GitHub's annotations");
    CLI::Option* const rules = command->add_flag("--rules", options->rules, "List every rule");
    json->excludes(sarif, gitHub);
    sarif->excludes(gitHub, rules);
    gitHub->excludes(rules);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Check(*options); }; });
}

} // namespace ozm::tool
