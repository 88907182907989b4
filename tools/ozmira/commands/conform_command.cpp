#include "base/errors.h"
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
    std::optional<int> decimals;
    bool outlineStrokes = false;
    bool lossy = false;
    bool quiet = false;
};

constexpr const char* kFooter = R"(Files with nothing to rewrite are copied byte for byte. Files are named as render
names pictures, with the extension .svg, and appear whole or not at all. What
can't be rewritten is refused with a message, and that file is not written.

Exit status: 0 all written, 1 some were refused, 2 wrong usage.

Examples:
  ozmira conform icon.svg -o out/
  ozmira conform icons/ -o out/ --quiet
  ozmira conform - < icon.svg > out.svg
)";

/// Rewrites the files of a plan on several threads, which take the next one from a common counter.
class ConformBatch {
public:
    ConformBatch(const conform::Options& options, const OutputPlan& plan, BatchReport& report)
        : m_options(options), m_plan(plan), m_report(report) {}

    void Run(unsigned jobs) {
        std::vector<std::jthread> others;
        const size_t count = std::clamp<size_t>(m_plan.icons.size(), 1, jobs);
        others.reserve(count);
        for (size_t i = 1; i < count; ++i) {
            try {
                others.emplace_back([this] { Work(); });
            } catch (const std::exception&) {
                break; // threads or memory are short: the ones that run do it all
            }
        }
        Work();
    }

    size_t WrittenCount() const { return m_writtenCount; }
    size_t ChangedCount() const { return m_changedCount; }

private:
    void Work() {
        for (size_t i = m_next++; i < m_plan.icons.size(); i = m_next++) {
            m_report.Done(i, Rewrite(m_plan.icons[i]));
        }
    }

    /// The answer is what went wrong, empty when nothing did.
    std::string Rewrite(const IconPlan& icon) noexcept {
        try {
            if (!icon.problem.empty()) throw FileError(icon.problem);
            const conform::Result result = conform::Conform(ReadInput(icon.source), m_options);
            if (result.isRefused) return DescribeRefusal(icon, result);
            Write(icon, result.text);
            ++m_writtenCount;
            if (result.isChanged) ++m_changedCount;
            return {};
        } catch (const std::bad_alloc&) {
            return "no memory left"; // short enough to need none
        } catch (const std::exception& error) {
            return InputName(icon.source) + ": " + error.what();
        }
    }

    static std::string DescribeRefusal(const IconPlan& icon, const conform::Result& result) {
        for (const conform::Finding& finding : result.findings) {
            if (!finding.isConvertible) return DescribeFinding(icon.source, finding);
        }
        return InputName(icon.source) + ": can't be rewritten";
    }

    void Write(const IconPlan& icon, const std::string& text) {
        const std::span bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
        if (icon.targets[0] == "-") {
            WriteToStandardOutput(bytes);
        } else {
            StagedFile(m_temporaryFiles, icon.targets[0], bytes).Commit();
        }
    }

    const conform::Options& m_options;
    const OutputPlan& m_plan;
    BatchReport& m_report;
    TemporaryFiles m_temporaryFiles;
    std::atomic<size_t> m_next = 0;
    std::atomic<size_t> m_writtenCount = 0, m_changedCount = 0;
};

void PrintSummary(const ConformBatch& batch, size_t problems, const std::string& destination) {
    std::string text = batch.WrittenCount() == 0
                           ? "no file written"
                           : CountOf(batch.WrittenCount(), "file") + " written to " + destination + ", " +
                                 FormatCount(batch.ChangedCount()) + " of them changed";
    if (problems > 0) text += ", " + CountOf(problems, "file") + " failed";
    StandardOutput output;
    output.Write(text + "\n");
    output.Flush();
}

int Conform(const ConformOptions& options) {
    const unsigned jobs = options.jobs ? ParseJobs("-j", *options.jobs)
                                       : std::clamp(std::thread::hardware_concurrency(), 1u, kMaximumJobs);
    if (options.output == "") throw UsageError("-o: the name is empty; name a file or a folder");
    const OutputPlan plan = PlanFiles(options.inputs, options.output, ".svg");
    const conform::Options settings{options.decimals, options.outlineStrokes, options.lossy};
    const bool showProgress = plan.icons.size() > 1 && !options.quiet && ::isatty(STDERR_FILENO);
    BatchReport report(plan.icons.size(), showProgress);
    ConformBatch batch(settings, plan, report);
    batch.Run(jobs);
    if (!options.quiet && !plan.toStandardOutput) PrintSummary(batch, report.Problems(), plan.destination);
    return report.Problems() == 0 ? kExitSuccess : kExitFailure;
}

} // namespace

void AddConformCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<ConformOptions>();
    CLI::App* const command = tool.add_subcommand("conform", "Rewrite files to be drawn as in a browser");
    command->add_option("FILE", options->inputs, "Files or folders to rewrite; - is standard input")
        ->required()
        ->type_name("");
    command->add_option("-o,--output", options->output, "Where to: FILE, DIR/, or - for standard output")
        ->type_name("PATH");
    command->add_option("--decimals", options->decimals, "Decimals of coordinates, 0 to 12")
        ->check(CLI::Range(0, 12))
        ->type_name("N");
    command->add_flag("--outline-strokes", options->outlineStrokes, "Turn strokes into shapes, which can be tinted");
    command->add_flag("--lossy", options->lossy, "Leave out what can't be rewritten");
    command->add_option("-j,--jobs", options->jobs, "Threads, 1 to 256; one for each core if absent")
        ->type_name("N");
    command->add_flag("-q,--quiet", options->quiet, "Print problems only");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Conform(*options); }; });
}

} // namespace ozm::tool
