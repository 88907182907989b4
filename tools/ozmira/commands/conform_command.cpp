#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "files/input_file.h"
#include "files/output_plan.h"
#include "files/staged_file.h"
#include "files/standard_output.h"
#include "files/temporary_files.h"
#include "report/batch_report.h"
#include "report/finding_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace ozm::tool {
namespace {

/// The options as written.
struct ConformOptions {
    std::vector<std::string> inputs;
    std::optional<std::string> output, jobs;
    std::optional<std::string> decimals;
    bool inPlace = false, dryRun = false;
    bool outlineStrokes = false, lossy = false;
    bool quiet = false;
};

constexpr const char* kFooter =
    R"(Drawings keep their names. They are written whole or not at all, and those that
already look as in a browser byte for byte. Without -o, standard input alone (-)
goes to standard output. -o names a folder, DIR, when it ends in / or is one,
and for several FILEs or a folder of them; else the drawing itself. A DIR is
made where it is missing; the sub-folders of a folder are kept below it.

What can't be rewritten, such as text, is refused with a message, and that file
is not written; with --lossy it is left out.

Exit status: 0 all written, 1 some were refused or failed, 2 wrong usage.

Examples:
  ozmira conform icon.svg -o out/
  ozmira conform icons/ -o out/ --outline-strokes
  ozmira conform icons/ --in-place
  ozmira conform icons/ --dry-run         What would change, and why
  ozmira conform - < icon.svg > out.svg
)";

/// The rules of findings, each once: "arc, root-style".
std::string RulesOf(const std::vector<conform::Finding>& findings) {
    std::set<std::string_view> named;
    std::string list;
    for (const conform::Finding& finding : findings) {
        if (finding.severity == conform::Severity::Note || !named.insert(finding.rule).second) continue;
        if (!list.empty()) list += ", ";
        list += finding.rule;
    }
    return list;
}

/// What there is to say about one file.
struct Outcome {
    std::string problem; ///< Why it was not written; empty when nothing went wrong.
    std::string remarks; ///< Lines about what was done.
};

/// Rewrites the files of a plan on several threads. Everything that they share is guarded or constant.
class ConformBatch {
public:
    ConformBatch(const ConformOptions& options, const conform::Options& settings, const OutputPlan& plan,
                 BatchReport& report)
        : m_options(options), m_settings(settings), m_plan(plan), m_report(report) {}

    void Run(unsigned jobs) {
        ForEachInParallel(m_plan.icons.size(), jobs, [this](size_t i, size_t) {
            Outcome outcome = Rewrite(m_plan.icons[i]);
            m_report.Done(i, std::move(outcome.problem), std::move(outcome.remarks));
        });
    }

    size_t WrittenCount() const { return m_writtenCount; }
    size_t ChangedCount() const { return m_changedCount; }

private:
    Outcome Rewrite(const IconPlan& icon) noexcept {
        try {
            if (!icon.problem.empty()) throw FileError(icon.problem);
            const conform::Result result = conform::Conform(ReadInput(icon.source), m_settings);
            if (result.isRefused) return {DescribeRefusal(icon, result), {}};
            if (!m_options.dryRun) Write(icon, result);
            ++m_writtenCount;
            if (result.isChanged) ++m_changedCount;
            return {{}, m_options.quiet ? std::string() : Remarks(icon, result)};
        } catch (const std::bad_alloc&) {
            return {"no memory left", {}}; // short enough to need none
        } catch (const std::exception& error) {
            return {Describe(icon, error.what()), {}};
        }
    }

    static std::string Describe(const IconPlan& icon, const char* problem) noexcept {
        try {
            return InputName(icon.source) + ": " + problem;
        } catch (const std::bad_alloc&) {
            return "no memory left"; // short enough to need none
        }
    }

    /// The first reason, and how many more there are.
    static std::string DescribeRefusal(const IconPlan& icon, const conform::Result& result) {
        std::string text;
        size_t more = 0;
        for (const conform::Finding& finding : result.findings) {
            if (finding.isConvertible) continue;
            if (text.empty()) {
                text = DescribeFinding(icon.source, finding);
            } else {
                ++more;
            }
        }
        return more == 0 ? text : text + ", and " + CountOf(more, "more reason");
    }

    /// What was left out, and in a dry run what would be done.
    std::string Remarks(const IconPlan& icon, const conform::Result& result) const {
        std::string remarks;
        if (m_options.dryRun && result.isChanged) {
            const std::string rules = RulesOf(result.findings);
            remarks = OnOneLine(InputName(icon.source)) + ": would be rewritten" +
                      (rules.empty() ? "" : " for " + rules) + "\n";
        }
        for (const conform::Finding& finding : result.findings) {
            if (!finding.isConvertible) remarks += DescribeFinding(icon.source, finding) + "\n";
        }
        return remarks;
    }

    void Write(const IconPlan& icon, const conform::Result& result) {
        if (m_options.inPlace && !result.isChanged) return;
        const std::span bytes(reinterpret_cast<const uint8_t*>(result.text.data()), result.text.size());
        if (icon.targets[0] == "-") {
            WriteToStandardOutput(bytes);
        } else {
            StagedFile(m_temporaryFiles, icon.targets[0], bytes).Commit();
        }
    }

    const ConformOptions& m_options;
    const conform::Options& m_settings;
    const OutputPlan& m_plan;
    BatchReport& m_report;
    TemporaryFiles m_temporaryFiles;
    std::atomic<size_t> m_writtenCount = 0, m_changedCount = 0;
};

void PrintSummary(const ConformOptions& options, const ConformBatch& batch, size_t problems,
                  const std::string& destination) {
    const std::string files = CountOf(batch.WrittenCount(), "file");
    const std::string changed = FormatCount(batch.ChangedCount());
    std::string text;
    if (options.dryRun) {
        text = changed + " of " + files + " would be rewritten";
    } else if (options.inPlace) {
        text = changed + " of " + files + " rewritten";
    } else if (batch.WrittenCount() == 0) {
        text = "no file written";
    } else {
        text = files + " written to " + destination + ", " + changed + " of them rewritten";
    }
    if (problems > 0) text += ", " + CountOf(problems, "file") + " failed";
    StandardOutput output;
    output.Write(text + "\n");
    output.Flush();
}

OutputPlan PlanOf(const ConformOptions& options) {
    if (options.output == "") throw UsageError("-o: the name is empty; name a file or a folder");
    if (options.inPlace) return PlanInPlace(options.inputs);
    const bool isStandardInputAlone = options.inputs.size() == 1 && options.inputs[0] == "-";
    // Nothing is written in a dry run, and so the names do not matter.
    if (options.dryRun && !options.output) {
        OutputPlan plan;
        plan.icons = ListInputs(options.inputs);
        return plan;
    }
    if (!options.output && !isStandardInputAlone) {
        throw UsageError("say where to write with -o PATH, or write --in-place");
    }
    return PlanDrawings(options.inputs, options.output);
}

int Conform(const ConformOptions& options) {
    const unsigned jobs = options.jobs ? ParseJobs("-j", *options.jobs)
                                       : std::clamp(std::thread::hardware_concurrency(), 1u, kMaximumJobs);
    conform::Options settings;
    if (options.decimals) settings.decimals = ParseDecimals("--decimals", *options.decimals);
    settings.outlineStrokes = options.outlineStrokes;
    settings.lossy = options.lossy;
    const OutputPlan plan = PlanOf(options);
    const bool showProgress = plan.icons.size() > 1 && !options.quiet && ::isatty(STDERR_FILENO);
    size_t problems = 0;
    {
        BatchReport report(plan.icons.size(), showProgress);
        ConformBatch batch(options, settings, plan, report);
        batch.Run(jobs);
        problems = report.Problems();
        if (!options.quiet && !plan.toStandardOutput)
            PrintSummary(options, batch, problems, plan.destination);
    }
    return problems == 0 ? kExitSuccess : kExitFailure;
}

} // namespace

void AddConformCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<ConformOptions>();
    CLI::App* const command = tool.add_subcommand("conform", "Rewrite files to be drawn as in a browser");
    command->add_option("FILE", options->inputs, "Files or folders to rewrite; - is standard input")
        ->required()
        ->type_name("");
    CLI::Option* const output =
        command->add_option("-o,--output", options->output, "Where to: FILE, DIR/, or - for standard output")
            ->type_name("PATH");
    command->add_flag("--in-place", options->inPlace, "Replace the files themselves")->excludes(output);
    command->add_flag("--dry-run", options->dryRun, "Write nothing; say what would change");
    command->add_option("--decimals", options->decimals, "Decimals of coordinates, 0 to 12")->type_name("N");
    command->add_flag("--outline-strokes", options->outlineStrokes, "Turn strokes into fills, to be tinted");
    command->add_flag("--lossy", options->lossy, "Leave out what can't be rewritten");
    command->add_option("-j,--jobs", options->jobs, "Threads, 1 to 256; one for each core if absent")
        ->type_name("N");
    command->add_flag("-q,--quiet", options->quiet, "Print problems only");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Conform(*options); }; });
}

} // namespace ozm::tool
