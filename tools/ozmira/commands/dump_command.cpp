#include "base/errors.h"
#include "base/text.h"
#include "commands/commands.h"
#include "files/drawing_file.h"
#include "report/document_json.h"
#include "report/document_text.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace ozm::tool {
namespace {

struct DumpOptions {
    std::string file;
    bool json = false;
};

constexpr const char* kFooter = R"(A file that is not a drawing yields the empty document.

Examples:
  ozmira dump icon.svg                The tree, a line for each element
  ozmira dump --json icon.svg         One JSON object, for other programs
  unzip -p icons.zip a.svg | ozmira dump -
)";

int Dump(const DumpOptions& options) {
    const Drawing drawing = [&] {
        try {
            return ReadDrawing(options.file);
        } catch (const FileError& error) {
            throw FileError(InputName(options.file) + ": " + error.what());
        }
    }();
    StandardOutput output;
    if (options.json) {
        JSONWriter json(output);
        WriteJSON(json, *drawing.document);
        output.Put('\n');
    } else {
        WriteText(output, *drawing.document);
        if (drawing.document->elements.empty()) {
            output.Write("(" + WhyNothingToDraw(drawing.text) + ")\n");
        }
    }
    output.Flush();
    return kExitSuccess;
}

} // namespace

void AddDumpCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<DumpOptions>();
    CLI::App* const command = tool.add_subcommand("dump", "Print the document parsed from a file");
    command->add_option("FILE", options->file, "File to read; - is standard input")
        ->required()
        ->type_name("");
    command->add_flag("--json", options->json, "Print JSON instead of a tree");
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Dump(*options); }; });
}

} // namespace ozm::tool
