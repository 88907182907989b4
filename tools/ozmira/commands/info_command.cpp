#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/drawing_file.h"
#include "files/output_plan.h"
#include "picture/icon_renderer.h"
#include "report/batch_report.h"
#include "report/document_summary.h"
#include "report/document_text.h"
#include "report/summary_json.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

struct InfoOptions {
    std::vector<std::string> files;
    bool json = false;
};

constexpr const char* kFooter =
    R"("differs" lists what is drawn differently from a browser, by the rules of
'ozmira check', which tells more; "missing" lists the ids that references name
but no element has.

Examples:
  ozmira info icon.svg
  ozmira info --json icons/*.svg      One JSON array, for other programs
  unzip -p icons.zip a.svg | ozmira info -
)";

void AppendTo(std::string& list, const std::string& item) { list += (list.empty() ? "" : ", ") + item; }

std::string DescribeElements(const Document& document, const DocumentSummary& summary) {
    std::string kinds;
    ForEachElementCount(summary, [&](std::string_view name, uint64_t count) {
        AppendTo(kinds, FormatCount(count) + " " + std::string(name));
    });
    if (summary.hiddenCount > 0) AppendTo(kinds, FormatCount(summary.hiddenCount) + " hidden");
    return FormatCount(document.elements.size()) + " (" + kinds + ")";
}

std::string DescribeDrawing(const DocumentSummary& summary) {
    if (!summary.problem.empty()) return "not possible: " + summary.problem;
    return CountOf(summary.cost.elements, "element") + ", " + CountOf(summary.cost.segments, "segment") +
           ", " + CountOf(summary.cost.depth, "level") + " deep";
}

void WriteInfo(StandardOutput& output, const std::string& file, const Document& document,
               const DocumentSummary& summary) {
    const auto line = [&](std::string name, const std::string& value) {
        name.resize(12, ' ');
        output.Write("  " + name + value + "\n");
    };
    output.Write(InputName(file) + "\n");
    line("size", FormatDimension(document.size.width) + " x " + FormatDimension(document.size.height));
    line("view box", FormatRect(document.viewBox));
    line("elements", DescribeElements(document, summary));
    line("styles", FormatCount(document.styles.size()));
    line("definitions", FormatCount(document.definitions.size()));
    line("gradients", FormatCount(GradientCount(summary)));
    line("drawing", DescribeDrawing(summary));
    std::string missing, differs;
    for (const std::string& id : summary.missingIds) AppendTo(missing, "#" + OnOneLine(ValidUTF8(id)));
    for (const auto& [rule, count] : summary.differences) {
        AppendTo(differs, FormatCount(count) + " " + std::string(rule));
    }
    if (!missing.empty()) line("missing", missing);
    if (!differs.empty()) line("differs", differs);
}

int Info(const InfoOptions& options) {
    StandardOutput output;
    JSONWriter json(output);
    int exitCode = kExitSuccess;
    const auto writeAll = [&] {
        for (const IconPlan& icon : ListInputs(options.files)) {
            const std::string& file = icon.source;
            try {
                if (!icon.problem.empty()) throw FileError(icon.problem);
                const Drawing drawing = ReadDrawingWithElements(file);
                DocumentSummary summary = Summarise(drawing);
                if (summary.problem.empty()) summary.problem = SizeProblem(*drawing.document);
                if (options.json) {
                    json.Object([&] {
                        json.Member("file", file);
                        WriteMembers(json, *drawing.document, summary);
                    });
                } else {
                    WriteInfo(output, file, *drawing.document, summary);
                }
            } catch (const StandardOutputError&) {
                throw;
            } catch (const FileError& error) {
                PrintProblem(InputName(file) + ": " + error.what());
                if (options.json) {
                    json.Object([&] {
                        json.Member("file", file);
                        json.Member("problem", std::string_view(error.what()));
                    });
                }
                exitCode = kExitFailure;
            }
        }
    };
    if (options.json) {
        json.Array(writeAll);
        output.Put('\n');
    } else {
        writeAll();
    }
    output.Flush();
    return exitCode;
}

} // namespace

void AddInfoCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* const command = tool.add_subcommand("info", "Show what files contain and what differs");
    command->add_option("FILE", options->files, "Files or folders to read; - is standard input")
        ->required()
        ->type_name("");
    command->add_flag("--json", options->json, "Print JSON");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Info(*options); }; });
}

} // namespace ozm::tool
