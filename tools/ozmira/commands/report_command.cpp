#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "commands/common_options.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "files/output_plan.h"
#include "files/standard_output.h"
#include "page/comparison_page.h"
#include "page/page_file.h"
#include "picture/icon_renderer.h"
#include "picture/png_encoder.h"
#include "picture/scaled_pictures.h"
#include "report/batch_failures.h"
#include "report/batch_report.h"
#include "report/drawing_check.h"
#include "report/finding_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

/// The options as written.
struct ReportOptions {
    std::vector<std::string> icons;
    std::string output = "report.html", scale = "1,2,3", fill = "#0a84ff", title = "Icons";
    DrawingOptions drawing;
    BatchOptions batch;
    bool conforms = false;
};

constexpr const char* kFooter =
    R"(The page shows every icon as an application shows it, at 1x, 2x and 3x, on light
and on dark ground and tinted, beside the original as the browser draws it; how
much they differ, the worst first; and what 'ozmira check' finds, with its place
in the source. It needs no network and can be sent as one file.

Exit status: 0 all drawn, 1 some could not be drawn (the page names them),
2 wrong usage.

Examples:
  ozmira report icons/                    report.html
  ozmira report icons/ --conform -o icons.html
  ozmira report icons/ --height 24 --fill crimson
)";

struct ReportSettings {
    CGSize size{0, 0};
    std::vector<double> scales;
    Color tint;
    double timeout = kDefaultTimeout;
    bool conforms = false;
};

ReportSettings ReadSettings(const ReportOptions& options) {
    ReportSettings settings;
    settings.size = options.drawing.Size();
    settings.scales = ParseScales("--scale", options.scale);
    std::sort(settings.scales.begin(), settings.scales.end());
    settings.tint = ParseColorArgument("--fill", options.fill);
    settings.timeout = options.drawing.Timeout();
    settings.conforms = options.conforms;
    return settings;
}

/// Draws the icons of a list on several threads and describes them for the page.
class ReportBatch {
public:
    ReportBatch(const ReportSettings& settings, const std::vector<IconPlan>& icons, BatchReport& report)
        : m_settings(settings), m_icons(icons), m_report(report), m_described(icons.size()) {}

    void Run(unsigned jobs) {
        std::vector<PNGEncoder> encoders(std::clamp<size_t>(m_icons.size(), 1, jobs));
        ForEachInParallel(m_icons.size(), jobs,
                          [&](size_t i, size_t worker) { m_report.Done(i, Describe(i, encoders[worker])); });
    }

    /// The icons in the order of the list, as the page takes them. One that memory was too short for is
    /// empty.
    const std::vector<std::string>& Described() const { return m_described; }

private:
    /// Describes an icon. Returns what went wrong; empty if nothing did.
    std::string Describe(size_t index, PNGEncoder& encoder) noexcept {
        const IconPlan& source = m_icons[index];
        return m_failures.Run(&source.source, [&]() -> std::string {
            PageIcon icon;
            icon.name = InputName(source.source);
            icon.problem = source.problem;
            if (icon.problem.empty()) FillColumns(source, icon, encoder);
            m_described[index] = DescribePageIcon(icon);
            if (!icon.problem.empty()) throw FileError(icon.problem);
            return {};
        });
    }

    void FillColumns(const IconPlan& source, PageIcon& icon, PNGEncoder& encoder) {
        icon.columns.resize(m_settings.conforms ? 3 : 2);
        try {
            std::string text = ReadInput(source.source);
            icon.findings = conform::Check(text);
            icon.columns[1].pictures = {DataURL("image/svg+xml", BytesOf(text))};
            if (m_settings.conforms) FillConformed(text, icon, encoder);
            icon.columns[0] = DrawColumn(ParseDrawingWithElements(std::move(text)), icon, encoder);
        } catch (const std::bad_alloc&) {
            icon.problem = kOutOfMemory;
        } catch (const std::exception& error) {
            icon.problem = error.what();
        }
    }

    void FillConformed(const std::string& text, PageIcon& icon, PNGEncoder& encoder) {
        conform::Result result = conform::Conform(text);
        if (result.isRefused) return;
        icon.columns[2] = DrawColumn(ParseDrawingWithElements(std::move(result.text)), icon, encoder);
    }

    static std::string PictureURL(const PixelRows& pixels, double scale, PNGEncoder& encoder) {
        encoder.Begin(pixels, scale);
        return DataURL("image/png", encoder.Encode());
    }

    PageColumn DrawColumn(const Drawing& drawing, PageIcon& icon, PNGEncoder& encoder) {
        CheckDrawing(*drawing.document);
        PageColumn column;
        IconRenderer plain(*drawing.document, kRenderingStateDefault, false, m_settings.timeout);
        const CGSize size = plain.FittingSize(m_settings.size, m_settings.scales.back());
        icon.width = size.width;
        icon.height = size.height;
        m_pictures.Draw(plain, m_settings.size, m_settings.scales, [&](size_t i, const PixelRows& pixels) {
            column.pictures.push_back(PictureURL(pixels, m_settings.scales[i], encoder));
        });
        RenderingState state = kRenderingStateDefault;
        state.fillColor = m_settings.tint;
        IconRenderer tinted(*drawing.document, state, false, m_settings.timeout);
        const double scale = m_settings.scales.back();
        m_pictures.Draw(tinted, m_settings.size, {&scale, 1}, [&](size_t, const PixelRows& pixels) {
            std::string url = PictureURL(pixels, scale, encoder);
            if (url != column.pictures.back()) column.tinted = std::move(url);
        });
        return column;
    }

    const ReportSettings& m_settings;
    const std::vector<IconPlan>& m_icons;
    BatchReport& m_report;
    BatchFailures m_failures;
    ScaledPictures m_pictures;
    std::vector<std::string> m_described;
};

int Report(const ReportOptions& options) {
    const ReportSettings settings = ReadSettings(options);
    const unsigned jobs = options.batch.Jobs();
    CheckPageName(options.output);
    OutputPlan plan;
    plan.icons = ListInputs(options.icons);
    PageSettings page;
    page.title = options.title;
    page.columns = {"Application", "Browser"};
    if (settings.conforms) page.columns.push_back("Rewritten");
    page.scales = settings.scales;
    page.tint = options.fill;
    page.sourceColumn = 1;
    page.hasFindings = true;

    size_t problems = 0;
    {
        BatchReport report(plan.icons.size(), options.batch.ShowsProgress(plan.icons.size()));
        ReportBatch batch(settings, plan.icons, report);
        batch.Run(jobs);
        problems = report.Problems();
        std::vector<std::string> described = batch.Described();
        std::erase_if(described, [](const std::string& icon) { return icon.empty(); });
        WritePage(options.output, MakePage(page, described), SourcesOf(plan));
    }
    if (!options.batch.quiet && options.output != "-") {
        PrintText(CountOf(plan.icons.size(), "icon") + " reported in " + OnOneLine(options.output) +
                  (problems > 0 ? ", " + CountOf(problems, "file") + " failed\n" : "\n"));
    }
    return problems == 0 ? kExitSuccess : kExitFailure;
}

} // namespace

void AddReportCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<ReportOptions>();
    CLI::App* const command = tool.add_subcommand("report", "Make a page that compares icons with a browser");
    command->add_option("ICON", options->icons, "Files or folders to show; - is standard input")
        ->required()
        ->type_name("");
    command->add_option("-o,--output", options->output, "The page; - is standard output")
        ->type_name("PATH")
        ->capture_default_str();
    options->drawing.AddSize(*command);
    command->add_option("--scale", options->scale, "Pixels per point, 0.01 to 100, one picture each")
        ->type_name("LIST")
        ->capture_default_str();
    command->add_option("--fill", options->fill, "Default fill of the tinted pictures")
        ->type_name("COLOR")
        ->capture_default_str();
    command->add_option("--title", options->title, "The title of the page")
        ->type_name("TEXT")
        ->capture_default_str();
    command->add_flag("--conform", options->conforms, "Add the picture of what conform would write");
    options->drawing.AddTimeout(*command);
    options->batch.Add(*command);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Report(*options); }; });
}

} // namespace ozm::tool
