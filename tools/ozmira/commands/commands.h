// The sub-commands. Each function adds one to the tool's arguments; when it is the one that was asked for,
// parsing the arguments sets `action` to what it does. An action returns the process's exit code and throws
// `UsageError` or `FileError` when it can't begin.
#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace ozm::tool {

using Action = std::function<int()>;

/// Draws files as PNG pictures.
void AddRenderCommand(CLI::App& tool, Action& action);
/// Says what files hold.
void AddInfoCommand(CLI::App& tool, Action& action);
/// Prints the document that a file is read into.
void AddDumpCommand(CLI::App& tool, Action& action);
/// Names what would be drawn otherwise than in a browser.
void AddCheckCommand(CLI::App& tool, Action& action);
/// Rewrites files so that they are drawn as in a browser.
void AddConformCommand(CLI::App& tool, Action& action);

} // namespace ozm::tool
