#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "commands/common_options.h"
#include "files/depfile.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "files/output_files.h"
#include "files/output_plan.h"
#include "files/standard_output.h"
#include "picture/icon_renderer.h"
#include "picture/png_encoder.h"
#include "picture/scaled_pictures.h"
#include "report/batch_failures.h"
#include "report/batch_report.h"
#include "report/drawing_check.h"
#include "report/finding_text.h"
#include "report/output_summary.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <unistd.h>

namespace ozm::tool {
namespace {

/// The options as given on the command line.
struct RenderOptions {
    std::vector<std::string> icons;
    std::optional<std::string> output, fill, depfile;
    DrawingOptions drawing;
    BatchOptions batch;
    std::string scale = "1";
    bool debugFrames = false;
    bool conforms = false, isStrict = false;
    bool dryRun = false;
};

constexpr const char* kFooter = R"(Pictures are called NAME.png at scale 1, NAME@2x.png at scale 2 and so on.
They appear whole or not at all, and replace pictures of the same name, but no
other file; a picture that would stay the same is left alone. x@2x.svg beside
x.svg is the drawing for scale 2.

Without -o pictures go into the current folder, but the picture of standard
input alone (-) goes to standard output. -o names a folder, DIR, when it ends in
/ or is one, and for several ICONs or a folder of them; else the picture itself,
FILE.png, with several scales FILE.png, FILE@2x.png and so on. A DIR is made
where it is missing; the sub-folders of a folder that is drawn are kept.

A picture has at most 32,767 pixels on a side and 100,000,000 in all. Files of
more than 64 MB, and drawings whose references form a cycle or multiply into
more than 10,000,000 elements, are refused. Drawing is given up when it has
taken 30 s of processor time, or the --timeout.

The last lines tell how many drawings look different in a browser, and why, by
the rules of 'ozmira check'; the warnings of a single ICON are printed.

Exit status: 0 all drawn, 1 some could not be drawn, 2 wrong usage.

Examples:
  ozmira render icon.svg                  icon.png in the drawing's own size
  ozmira render icon.svg --width 24 --scale 1,2,3
                                          icon.png, icon@2x.png, icon@3x.png
  ozmira render icons/ -o pictures/ --fill steelblue
  ozmira render *.svg -o pictures/ -j 4 --quiet
  ozmira render icons/ -o pictures/ --dry-run
                                          Which pictures would change
  ozmira render - < icon.svg > icon.png
)";

/// The parsed options.
struct RenderSettings {
    CGSize size{0, 0};
    std::vector<double> scales;
    RenderingState state = kRenderingStateDefault;
    bool debugFrames = false;
    double timeout = kDefaultTimeout; // seconds per picture
    bool conforms = false;            // draw what `conform` would write
    bool showsWarnings = true;
    bool isDryRun = false;
    bool isQuiet = false;
};

RenderSettings ReadSettings(const RenderOptions& options) {
    RenderSettings settings;
    settings.size = options.drawing.Size();
    settings.scales = ParseScales("--scale", options.scale);
    if (options.fill) settings.state.fillColor = ParseColorArgument("--fill", *options.fill);
    settings.debugFrames = options.debugFrames;
    settings.conforms = options.conforms;
    settings.isDryRun = options.dryRun;
    settings.isQuiet = options.batch.quiet;
    settings.showsWarnings = !options.batch.quiet || options.isStrict;
    settings.timeout = options.drawing.Timeout();
    return settings;
}

/// Draws the icons of a plan on several threads, which take the next icon from a shared counter. Everything
/// else that they share is constant or synchronised.
class RenderBatch {
public:
    RenderBatch(const RenderSettings& settings, const OutputPlan& plan, BatchReport& report)
        : m_settings(settings), m_plan(plan), m_report(report),
          m_files(
              SourcesOf(plan), settings.isDryRun, [this] { EndEarly(); }, FoldersOf(plan)) {}

    void Run(unsigned jobs) {
        std::vector<PNGEncoder> encoders(std::clamp<size_t>(m_plan.icons.size(), 1, jobs));
        ForEachInParallel(
            m_plan.icons.size(), jobs,
            [&](size_t i, size_t worker) {
                std::string remarks;
                std::string problem = Draw(m_plan.icons[i], encoders[worker], remarks);
                m_report.Done(i, std::move(problem), std::move(remarks));
            },
            &m_failures.Stop());
    }

    OutputCounts Pictures() const { return {m_files.WrittenCount(), m_files.UnchangedCount()}; }
    /// Number of drawings that were not drawn because no picture could be written any more.
    size_t UnreachedCount() const { return m_report.Unfinished() + m_failures.DroppedCount(); }
    void WriteDepfile(const std::string& path, const std::string& rules) {
        m_files.Write(path, BytesOf(rules), OutputKind::List);
    }
    /// Of the icons that were drawn; none in pictures of conformed drawings, and where nobody wants to know.
    const FindingCounts& Findings() const { return m_findings; }

private:
    /// Draws the pictures of an icon. Returns what went wrong; empty if nothing did.
    std::string Draw(const IconPlan& icon, PNGEncoder& encoder, std::string& remarks) noexcept {
        return m_failures.Run(&icon.source, [&]() -> std::string {
            if (!icon.problem.empty()) throw FileError(icon.problem);
            if (m_settings.conforms) return DrawConformed(icon, encoder, remarks);
            const Drawing drawing = ReadDrawingWithElements(icon.source);
            DrawPictures(icon, *drawing.document, encoder, remarks);
            if (m_settings.showsWarnings) CountFindings(icon, drawing.text, remarks);
            return {};
        });
    }

    /// Draws what `conform` would write. Returns why that is refused; empty if it is not.
    std::string DrawConformed(const IconPlan& icon, PNGEncoder& encoder, std::string& remarks) {
        conform::Result result = conform::Conform(ReadInput(icon.source));
        if (result.isRefused) return DescribeRefusal(icon.source, result.findings);
        const Drawing drawing = ParseDrawingWithElements(std::move(result.text));
        DrawPictures(icon, *drawing.document, encoder, remarks);
        return {};
    }

    /// Warnings of a single icon become its remarks.
    void CountFindings(const IconPlan& icon, const std::string& text, std::string& remarks) {
        const std::vector<conform::Finding> findings = conform::Check(text);
        if (m_plan.icons.size() == 1) {
            for (const conform::Finding& finding : findings) {
                if (finding.severity != conform::Severity::Note) {
                    remarks += DescribeFinding(icon.source, finding) + "\n";
                }
            }
        }
        const std::lock_guard lock(m_findingsMutex);
        m_findings.Add(findings);
    }

    /// Pixels per point of a target. A drawing made for a scale has the size of its picture already.
    double DrawingScale(const Target& target) const {
        const bool hasSize = m_settings.size.width > 0 || m_settings.size.height > 0;
        return target.hasOwnDrawing && !hasSize ? 1 : target.scale;
    }

    void DrawPictures(const IconPlan& icon, Document& document, PNGEncoder& encoder, std::string& remarks) {
        CheckDrawing(document);
        IconRenderer renderer(document, m_settings.state, m_settings.debugFrames, m_settings.timeout);
        std::vector<double> scales;
        for (const Target& target : icon.targets) scales.push_back(DrawingScale(target));
        std::vector<StagedFile> files;
        bool isBlank = true;
        m_pictures.Draw(renderer, m_settings.size, scales, [&](size_t i, const PixelRows& pixels) {
            const Target& target = icon.targets[i];
            encoder.Begin(pixels, target.scale);
            isBlank = isBlank && encoder.IsBlank();
            if (target.path != "-") {
                files.push_back(m_files.Stage(target.path, encoder.Output(), OutputKind::Picture));
            } else if (!m_settings.isDryRun) {
                WriteToStandardOutput(encoder.Encode());
            }
        });
        if (!m_settings.isQuiet) remarks = Remarks(icon, files, isBlank);
        for (StagedFile& file : files) file.Commit();
    }

    /// What is worth knowing about the pictures of an icon.
    std::string Remarks(const IconPlan& icon, std::span<const StagedFile> files, bool isBlank) const {
        std::string remarks;
        if (isBlank && !icon.targets.empty()) remarks += DescribeBlank(icon.source);
        for (size_t i = 0; m_settings.isDryRun && i < files.size(); ++i) {
            if (files[i].IsUnchanged()) continue;
            remarks +=
                InputName(icon.source) + ": would be drawn to " + OnOneLine(icon.targets[i].path) + "\n";
        }
        return remarks;
    }

    /// A signal is about to end the process.
    void EndEarly() noexcept {
        if (!m_settings.isQuiet && !m_plan.toStandardOutput) {
            m_report.EndEarly("interrupted; " + DescribeOutputs("picture", Pictures(), m_plan.destination,
                                                                m_settings.isDryRun));
        }
    }

    const RenderSettings& m_settings;
    const OutputPlan& m_plan;
    BatchReport& m_report;
    BatchFailures m_failures;
    ScaledPictures m_pictures;
    std::mutex m_findingsMutex;
    FindingCounts m_findings;
    OutputFiles m_files;
};

/// The text as one word of a shell.
std::string ShellWord(const std::string& text) {
    const auto isPlain = [](unsigned char c) { return std::isalnum(c) || std::strchr("/._-+@%,:", c); };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain)) return text;
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return quoted + "'";
}

/// Describes how many drawings look different in a browser and why, and which command tells more.
std::string DescribeDifferences(const FindingCounts& counts, const std::vector<std::string>& icons) {
    std::string text = FormatCount(counts.DifferentFiles()) + " of " + CountOf(counts.Files(), "drawing");
    text += counts.DifferentFiles() == 1 ? " differs" : " differ";
    text += " from a browser's picture:";
    constexpr size_t kMostNamed = 8;
    size_t rules = 0;
    counts.ForEachRule([&](std::string_view rule, std::string_view, uint64_t files, uint64_t) {
        if (++rules > kMostNamed) return;
        text += (rules == 1 ? " " : ", ") + FormatCount(files) + " " + std::string(rule);
    });
    if (rules > kMostNamed) text += ", and " + FormatCount(rules - kMostNamed) + " more rules";
    text += "\n'ozmira check";
    constexpr size_t kMostInputs = 3;
    for (size_t i = 0; i < std::min(icons.size(), kMostInputs); ++i)
        text += " " + ShellWord(OnOneLine(icons[i]));
    if (icons.size() > kMostInputs) text += " ...";
    return text + "' tells where; --conform draws as a browser does\n";
}

int Render(const RenderOptions& options) {
    const RenderSettings settings = ReadSettings(options);
    const unsigned jobs = options.batch.Jobs();
    if (options.output == "") throw UsageError("-o: the name is empty; name a file or a folder");
    const OutputPlan plan = PlanOutput(options.icons, options.output, settings.scales);
    const std::string depfile = options.depfile ? MakeDepfile(plan, *options.depfile) : "";
    if (plan.toStandardOutput && !options.dryRun && ::isatty(STDOUT_FILENO)) {
        throw UsageError("a picture would go to the terminal; redirect it, or name a file with -o");
    }
    std::string summary;
    bool isComplete = false;
    FindingCounts findings;
    {
        const bool showProgress = options.batch.ShowsProgress(plan.icons.size());
        BatchReport report(plan.icons.size(), showProgress);
        RenderBatch batch(settings, plan, report);
        batch.Run(jobs);
        isComplete = report.Problems() + batch.UnreachedCount() == 0;
        summary = DescribeOutputs("picture", batch.Pictures(), plan.destination, options.dryRun) +
                  DescribeShortfall(report.Problems(), batch.UnreachedCount()) + "\n";
        if (options.depfile && !options.dryRun) batch.WriteDepfile(*options.depfile, depfile);
        findings = batch.Findings();
    }
    if (!options.batch.quiet && !plan.toStandardOutput) {
        PrintText(summary);
        if (findings.DifferentFiles() > 0) PrintText(DescribeDifferences(findings, options.icons));
    }
    const bool isFailure = !isComplete || (options.isStrict && findings.DifferentFiles() > 0);
    return isFailure ? kExitFailure : kExitSuccess;
}

} // namespace

void AddRenderCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App* const command = tool.add_subcommand("render", "Draw files as PNG pictures");
    command->add_option("ICON", options->icons, "Files or folders to draw; - is standard input")
        ->required()
        ->type_name("");
    command->add_option("-o,--output", options->output, "Where to: FILE, DIR/, or - for standard output")
        ->type_name("PATH");
    options->drawing.AddSize(*command);
    command->add_option("--scale", options->scale, "Pixels per point, 0.01 to 100, one picture each")
        ->type_name("LIST")
        ->capture_default_str();
    command->add_option("--fill", options->fill, "Default fill: #rgb, #rrggbb, rgb(), name")
        ->type_name("COLOR");
    command->add_flag("--debug-frames", options->debugFrames, "Frame drawing (green) and picture (blue)");
    options->drawing.AddTimeout(*command);
    command->add_flag("--conform", options->conforms, "Draw as a browser does: what conform would write");
    command->add_flag("--strict", options->isStrict, "Exit with 1 where a browser's picture differs");
    command->add_flag("--dry-run", options->dryRun, "Write nothing; say which pictures would change");
    command->add_option("--depfile", options->depfile, "Write for make what TARGET depends on")
        ->type_name("TARGET.d");
    options->batch.Add(*command);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Render(*options); }; });
}

} // namespace ozm::tool
