#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "files/output_plan.h"
#include "files/staged_file.h"
#include "files/standard_output.h"
#include "files/temporary_files.h"
#include "picture/icon_renderer.h"
#include "picture/png_encoder.h"
#include "report/batch_report.h"
#include "report/drawing_check.h"
#include "report/finding_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace ozm::tool {
namespace {

/// The options as given on the command line.
struct RenderOptions {
    std::vector<std::string> icons;
    std::optional<std::string> output, width, height, fill, timeout, jobs;
    std::string scale = "1";
    bool debugFrames = false;
    bool conforms = false, isStrict = false;
    bool quiet = false;
};

constexpr const char* kFooter = R"(Pictures are called NAME.png at scale 1, NAME@2x.png at scale 2 and so on.
They appear whole or not at all, and replace pictures of the same name. Without
-o they go into the current folder, but the picture of standard input alone (-)
goes to standard output. -o names a folder, DIR, when it ends in / or is one,
and for several ICONs or a folder of them; else the picture itself, FILE.png,
with several scales FILE.png, FILE@2x.png and so on. A DIR is made where it is
missing; the sub-folders of a folder that is drawn are kept below it.

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
};

RenderSettings ReadSettings(const RenderOptions& options) {
    RenderSettings settings;
    if (options.width) settings.size.width = ParseLengthArgument("--width", *options.width);
    if (options.height) settings.size.height = ParseLengthArgument("--height", *options.height);
    settings.scales = ParseScales("--scale", options.scale);
    if (options.fill) settings.state.fillColor = ParseColorArgument("--fill", *options.fill);
    settings.debugFrames = options.debugFrames;
    settings.conforms = options.conforms;
    settings.showsWarnings = !options.quiet || options.isStrict;
    if (options.timeout) settings.timeout = ParseTimeout("--timeout", *options.timeout);
    return settings;
}

/// Draws the icons of a plan on several threads, which take the next icon from a shared counter. Everything
/// else that they share is constant or synchronised.
class RenderBatch {
public:
    RenderBatch(const RenderSettings& settings, const OutputPlan& plan, BatchReport& report)
        : m_settings(settings), m_plan(plan), m_report(report) {}

    void Run(unsigned jobs) {
        std::vector<PNGEncoder> encoders(std::clamp<size_t>(m_plan.icons.size(), 1, jobs));
        ForEachInParallel(m_plan.icons.size(), jobs, [&](size_t i, size_t worker) {
            std::string remarks;
            std::string problem = Draw(m_plan.icons[i], encoders[worker], remarks);
            m_report.Done(i, std::move(problem), std::move(remarks));
        });
    }

    size_t PictureCount() const { return m_pictureCount; }
    /// Of the icons that were drawn; none in pictures of conformed drawings.
    const FindingCounts& Findings() const { return m_findings; }

private:
    /// Draws the pictures of an icon. Returns what went wrong; empty if nothing did.
    std::string Draw(const IconPlan& icon, PNGEncoder& encoder, std::string& remarks) noexcept {
        try {
            if (!icon.problem.empty()) return Describe(icon, icon.problem.c_str());
            Drawing drawing =
                m_settings.conforms ? ReadConformed(icon) : ReadDrawingWithElements(icon.source);
            DrawPictures(icon, *drawing.document, encoder);
            if (!m_settings.conforms) CountFindings(icon, drawing.text, remarks);
            return {};
        } catch (const std::bad_alloc&) {
            return Describe(icon, kOutOfMemory);
        } catch (const std::exception& error) {
            return Describe(icon, error.what());
        }
    }

    static std::string Describe(const IconPlan& icon, const char* problem) noexcept {
        try {
            return InputName(icon.source) + ": " + problem;
        } catch (const std::bad_alloc&) {
            return "no memory left"; // short enough to be stored without allocating
        }
    }

    static Drawing ReadConformed(const IconPlan& icon) {
        conform::Result result = conform::Conform(ReadInput(icon.source));
        if (!result.isRefused) return ParseDrawingWithElements(std::move(result.text));
        const auto reason = std::find_if(result.findings.begin(), result.findings.end(),
                                         [](const conform::Finding& f) { return !f.isConvertible; });
        if (reason == result.findings.end()) throw FileError("can't be rewritten");
        throw FileError("line " + std::to_string(reason->line) + ", column " +
                        std::to_string(reason->column) + ": " + reason->message + "; " +
                        std::string(reason->remedy) + " [" + std::string(reason->rule) + "]");
    }

    /// Warnings of a single icon become its remarks.
    void CountFindings(const IconPlan& icon, const std::string& text, std::string& remarks) {
        const std::vector<conform::Finding> findings = conform::Check(text);
        if (m_plan.icons.size() == 1 && m_settings.showsWarnings) {
            for (const conform::Finding& finding : findings) {
                if (finding.severity != conform::Severity::Note) {
                    remarks += DescribeFinding(icon.source, finding) + "\n";
                }
            }
        }
        const std::lock_guard lock(m_findingsMutex);
        m_findings.Add(findings);
    }

    void DrawPictures(const IconPlan& icon, Document& document, PNGEncoder& encoder) {
        CheckDrawing(document);
        IconRenderer renderer(document, m_settings.state, m_settings.debugFrames, m_settings.timeout);
        double largest = 0;
        for (const double scale : m_settings.scales) {
            largest = std::max(largest, renderer.CheckSize(m_settings.size, scale));
        }
        std::unique_lock large(m_largePicture, std::defer_lock);
        if (largest > kLargePicturePixels) large.lock();

        std::vector<StagedFile> files;
        for (size_t i = 0; i < icon.targets.size(); ++i) {
            const double scale = m_settings.scales[i];
            const Bitmap bitmap = renderer.Draw(m_settings.size, scale);
            const auto png = encoder.Encode(bitmap.Pixels(), scale);
            if (icon.targets[i] == "-") {
                WriteToStandardOutput(png);
            } else {
                files.emplace_back(m_temporaryFiles, icon.targets[i], png);
            }
        }
        for (StagedFile& file : files) file.Commit();
        m_pictureCount += icon.targets.size();
    }

    const RenderSettings& m_settings;
    const OutputPlan& m_plan;
    BatchReport& m_report;
    TemporaryFiles m_temporaryFiles;
    std::mutex m_largePicture;
    std::mutex m_findingsMutex;
    FindingCounts m_findings;
    std::atomic<size_t> m_pictureCount = 0;
};

void PrintText(const std::string& text) {
    StandardOutput output;
    output.Write(text);
    output.Flush();
}

/// Prints what was done to standard output, because it is not a problem.
void PrintSummary(size_t pictures, size_t problems, const std::string& destination) {
    std::string text =
        pictures == 0 ? "no picture written" : CountOf(pictures, "picture") + " written to " + destination;
    if (problems > 0) text += ", " + CountOf(problems, "file") + " failed";
    PrintText(text + "\n");
}

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
    const unsigned jobs = options.jobs ? ParseJobs("-j", *options.jobs)
                                       : std::clamp(std::thread::hardware_concurrency(), 1u, kMaximumJobs);
    if (options.output == "") throw UsageError("-o: the name is empty; name a file or a folder");
    const OutputPlan plan = PlanOutput(options.icons, options.output, settings.scales);
    if (plan.toStandardOutput && ::isatty(STDOUT_FILENO)) {
        throw UsageError("a picture would go to the terminal; redirect it, or name a file with -o");
    }
    size_t pictures = 0, problems = 0;
    FindingCounts findings;
    {
        const bool showProgress = plan.icons.size() > 1 && !options.quiet && ::isatty(STDERR_FILENO);
        BatchReport report(plan.icons.size(), showProgress);
        RenderBatch batch(settings, plan, report);
        batch.Run(jobs);
        pictures = batch.PictureCount();
        problems = report.Problems();
        findings = batch.Findings();
    }
    if (!options.quiet && !plan.toStandardOutput) {
        PrintSummary(pictures, problems, plan.destination);
        if (findings.DifferentFiles() > 0) PrintText(DescribeDifferences(findings, options.icons));
    }
    const bool isFailure = problems > 0 || (options.isStrict && findings.DifferentFiles() > 0);
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
    command->add_option("--width", options->width, "Largest width in points; proportions are kept")
        ->type_name("W");
    command->add_option("--height", options->height, "Largest height in points")->type_name("H");
    command->add_option("--scale", options->scale, "Pixels per point, 0.01 to 100, one picture each")
        ->type_name("LIST")
        ->capture_default_str();
    command->add_option("--fill", options->fill, "Default fill: #rgb, #rrggbb, rgb(), name")
        ->type_name("COLOR");
    command->add_flag("--debug-frames", options->debugFrames, "Frame drawing (green) and picture (blue)");
    command->add_option("--timeout", options->timeout, "Processor seconds for a picture, 0: no limit")
        ->type_name("S");
    command->add_option("-j,--jobs", options->jobs, "Threads, 1 to 256; one for each core if absent")
        ->type_name("N");
    command->add_flag("--conform", options->conforms, "Draw as a browser does: what conform would write");
    command->add_flag("--strict", options->isStrict, "Exit with 1 where a browser's picture differs");
    command->add_flag("-q,--quiet", options->quiet, "Print problems only");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Render(*options); }; });
}

} // namespace ozm::tool
