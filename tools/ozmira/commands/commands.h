// The sub-commands. Each function adds one to the tool's command line. If the user asks for that sub-command,
// parsing the arguments sets `action` to the function that carries it out. An action returns the exit code of
// the process and throws `UsageError` or `FileError` if it can't start.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ozm::tool {

using Action = std::function<int()>;

/// Draws files as PNG pictures.
void AddRenderCommand(CLI::App& tool, Action& action);
/// Shows what files contain.
void AddInfoCommand(CLI::App& tool, Action& action);
/// Prints the document parsed from a file.
void AddDumpCommand(CLI::App& tool, Action& action);
/// Lists what a browser draws differently.
void AddCheckCommand(CLI::App& tool, Action& action);
/// Rewrites files so that they are drawn as in a browser.
void AddConformCommand(CLI::App& tool, Action& action);
/// Makes an asset catalogue for Xcode.
void AddCatalogueCommand(CLI::App& tool, Action& action);
/// Makes a page that shows icons beside a browser's pictures of them.
void AddReportCommand(CLI::App& tool, Action& action);
/// Compares two folders of pictures or drawings.
void AddDiffCommand(CLI::App& tool, Action& action);

} // namespace ozm::tool
