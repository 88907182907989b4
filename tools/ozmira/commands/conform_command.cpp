#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "commands/common_options.h"
#include "files/gzip.h"
#include "files/input_file.h"
#include "files/output_files.h"
#include "files/output_plan.h"
#include "files/standard_output.h"
#include "report/batch_failures.h"
#include "report/batch_report.h"
#include "report/finding_text.h"
#include "report/output_summary.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

/// The options as written.
struct ConformOptions {
    std::vector<std::string> inputs;
    std::optional<std::string> output, decimals;
    BatchOptions batch;
    bool inPlace = false, dryRun = false;
    bool outlineStrokes = false, lossy = false;
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

/// Rewrites the files of a plan on several threads. Everything that they share is guarded or constant.
class ConformBatch {
public:
    ConformBatch(const ConformOptions& options, const conform::Options& settings, const OutputPlan& plan,
                 BatchReport& report)
        : m_options(options), m_settings(settings), m_plan(plan), m_report(report),
          m_files(
              options.inPlace ? std::vector<std::string>() : SourcesOf(plan), options.dryRun,
              [this] { EndEarly(); }, FoldersOf(plan)) {}

    void Run(unsigned jobs) {
        ForEachInParallel(
            m_plan.icons.size(), jobs,
            [this](size_t i, size_t) {
                std::string remarks;
                std::string problem = Rewrite(m_plan.icons[i], remarks);
                m_report.Done(i, std::move(problem), std::move(remarks));
            },
            &m_failures.Stop());
    }

    /// Number of files that are, or in a dry run would be, as they are wanted.
    size_t DoneCount() const { return m_doneCount; }
    /// Of these, the number whose text is not that of their source.
    size_t ChangedCount() const { return m_changedCount; }
    OutputCounts Files() const { return {m_files.WrittenCount(), m_files.UnchangedCount()}; }
    /// Number of files that were not rewritten because none could be written any more.
    size_t UnreachedCount() const { return m_report.Unfinished() + m_failures.DroppedCount(); }

private:
    /// Rewrites a file. Returns why it was not written; empty if it was.
    std::string Rewrite(const IconPlan& icon, std::string& remarks) noexcept {
        return m_failures.Run(&icon.source, [&]() -> std::string {
            if (!icon.problem.empty()) throw FileError(icon.problem);
            const PackedInput input = ReadPackedInput(icon.source);
            const conform::Result result = conform::Conform(input.text, m_settings);
            if (result.isRefused) return DescribeRefusal(icon.source, result.findings);
            Write(icon, input, result);
            ++m_doneCount;
            if (result.isChanged) ++m_changedCount;
            if (!m_options.batch.quiet) remarks = Remarks(icon, result);
            return {};
        });
    }

    /// What was left out, and in a dry run what would be done.
    std::string Remarks(const IconPlan& icon, const conform::Result& result) const {
        std::string remarks;
        if (m_options.dryRun && result.isChanged) {
            const std::string rules = RulesOf(result.findings);
            remarks = InputName(icon.source) + ": would be rewritten" +
                      (rules.empty() ? "" : " for " + rules) + "\n";
        }
        for (const conform::Finding& finding : result.findings) {
            if (!finding.isConvertible) remarks += DescribeFinding(icon.source, finding) + "\n";
        }
        return remarks;
    }

    void Write(const IconPlan& icon, const PackedInput& input, const conform::Result& result) {
        if (icon.targets.empty() || (m_options.inPlace && !result.isChanged)) return;
        const std::string& path = icon.targets[0].path;
        if (path == "-") {
            if (!m_options.dryRun) PrintText(result.text);
        } else if (!IsPackedDrawingName(path)) {
            m_files.Write(path, BytesOf(result.text), OutputKind::Drawing);
        } else if (!result.isChanged && !input.packed.empty()) {
            m_files.Write(path, BytesOf(input.packed), OutputKind::Drawing);
        } else {
            m_files.Write(path, PackGzip(result.text), OutputKind::Drawing);
        }
    }

    /// A signal is about to end the process.
    void EndEarly() noexcept {
        if (!m_options.batch.quiet && !m_plan.toStandardOutput) {
            m_report.EndEarly("interrupted; " +
                              DescribeOutputs("file", Files(), m_plan.destination, m_options.dryRun));
        }
    }

    const ConformOptions& m_options;
    const conform::Options& m_settings;
    const OutputPlan& m_plan;
    BatchReport& m_report;
    BatchFailures m_failures;
    std::atomic<size_t> m_doneCount = 0, m_changedCount = 0;
    OutputFiles m_files;
};

void PrintSummary(const ConformOptions& options, const ConformBatch& batch, size_t problems,
                  const std::string& destination) {
    const std::string files = CountOf(batch.DoneCount(), "file");
    const std::string changed = FormatCount(batch.ChangedCount());
    std::string text;
    if (options.dryRun) {
        text = changed + " of " + files + " would be rewritten";
    } else if (options.inPlace) {
        text = changed + " of " + files + " rewritten";
    } else {
        text = DescribeOutputs("file", batch.Files(), destination, false);
        if (batch.DoneCount() > 0) text += ", " + changed + " of them rewritten";
    }
    text += DescribeShortfall(problems, batch.UnreachedCount());
    PrintText(text + "\n");
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
    const unsigned jobs = options.batch.Jobs();
    conform::Options settings;
    if (options.decimals) settings.decimals = ParseDecimals("--decimals", *options.decimals);
    settings.outlineStrokes = options.outlineStrokes;
    settings.lossy = options.lossy;
    const OutputPlan plan = PlanOf(options);
    const bool showProgress = options.batch.ShowsProgress(plan.icons.size());
    bool isComplete = false;
    {
        BatchReport report(plan.icons.size(), showProgress);
        ConformBatch batch(options, settings, plan, report);
        batch.Run(jobs);
        isComplete = report.Problems() + batch.UnreachedCount() == 0;
        if (!options.batch.quiet && !plan.toStandardOutput)
            PrintSummary(options, batch, report.Problems(), plan.destination);
    }
    return isComplete ? kExitSuccess : kExitFailure;
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
    options->batch.Add(*command);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Conform(*options); }; });
}

} // namespace ozm::tool
