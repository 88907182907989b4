#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/drawing_file.h"
#include "files/output_plan.h"
#include "report/batch_report.h"
#include "report/document_json.h"
#include "report/document_summary.h"
#include "report/document_text.h"
#include "report/names.h"

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

/// Calls visit(name, count) for each kind of element that the document has.
void ForEachElementCount(const DocumentSummary& summary, auto&& visit) {
    for (size_t type = 0; type < summary.elementCounts.size(); ++type) {
        const uint64_t count = summary.elementCounts[type];
        if (count > 0) visit(NameOf(static_cast<Element::Type>(type)), count);
    }
}

uint64_t GradientCount(const DocumentSummary& summary) {
    return summary.elementCounts[static_cast<size_t>(Element::Type::GradientElement)];
}

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

void WriteInfo(JSONWriter& json, const std::string& file, const Document& document,
               const DocumentSummary& summary) {
    json.Object([&] {
        json.Member("file", file);
        json.Key("size");
        json.Object([&] {
            json.Key("width");
            WriteJSON(json, document.size.width);
            json.Key("height");
            WriteJSON(json, document.size.height);
        });
        json.Key("viewBox");
        WriteJSON(json, document.viewBox);
        json.Key("elements");
        json.Object([&] {
            ForEachElementCount(summary,
                                [&](std::string_view name, uint64_t count) { json.Member(name, count); });
        });
        json.Member("hidden", summary.hiddenCount);
        json.Member("styles", document.styles.size());
        json.Member("definitions", document.definitions.size());
        json.Member("gradients", GradientCount(summary));
        json.Key("drawing");
        json.Object([&] {
            json.Member("possible", summary.problem.empty());
            if (!summary.problem.empty()) json.Member("problem", summary.problem);
            json.Member("elements", summary.cost.elements);
            json.Member("segments", summary.cost.segments);
            json.Member("depth", summary.cost.depth);
        });
        json.Key("missing");
        json.Array([&] {
            for (const std::string& id : summary.missingIds) json.Value(id);
        });
        json.Key("differences");
        json.Object([&] {
            for (const auto& [rule, count] : summary.differences) json.Member(rule, count);
        });
    });
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
                const DocumentSummary summary = Summarise(drawing);
                if (options.json) {
                    WriteInfo(json, file, *drawing.document, summary);
                } else {
                    WriteInfo(output, file, *drawing.document, summary);
                }
            } catch (const StandardOutputError&) {
                throw;
            } catch (const FileError& error) {
                PrintProblem(InputName(file) + ": " + error.what());
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
