#include "base/errors.h"
#include "base/text.h"
#include "catalogue/catalogue_folder.h"
#include "catalogue/catalogue_plan.h"
#include "catalogue/catalogue_writer.h"
#include "catalogue/set_names.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "commands/common_options.h"
#include "files/standard_output.h"
#include "report/batch_report.h"
#include "report/output_summary.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

/// The options as written.
struct CatalogueOptions {
    std::vector<std::string> icons;
    std::optional<std::string> output;
    DrawingOptions drawing;
    BatchOptions batch;
    bool isTemplate = false, isVector = false, isNamespace = false;
    bool prunes = false, dryRun = false;
};

constexpr const char* kFooter =
    R"(Each drawing, NAME.svg, becomes the image set NAME with pictures at 1x, 2x and
3x, or with --vector the drawing itself. NAME~dark.svg beside it is its dark
appearance. The sub-folders of a folder become groups. Drawings that a browser
draws differently are conformed first, as 'ozmira conform' does.

A catalogue that exists is kept up to date: files that would not change are left
alone, and so is all that other programs have put into it. Image sets without a
source stay unless --prune is given.

Exit status: 0 all made, 1 some could not be made, 2 wrong usage.

Examples:
  ozmira catalogue icons/ -o Icons.xcassets
  ozmira catalogue icons/ -o Icons.xcassets --height 24 --template
  ozmira catalogue icons/ -o Icons.xcassets --vector --namespace
  ozmira catalogue home.svg home~dark.svg -o Assets.xcassets
  ozmira catalogue icons/ -o Icons.xcassets --prune --dry-run
)";

CatalogueSettings ReadSettings(const CatalogueOptions& options) {
    CatalogueSettings settings;
    std::string output = options.output.value_or("");
    while (output.size() > 1 && output.ends_with('/')) output.pop_back();
    settings.catalogue = output;
    if (settings.catalogue.extension() != kCatalogueExtension) {
        throw UsageError(options.output ? "-o: \"" + OnOneLine(output) +
                                              "\" is no asset catalogue; end its name with .xcassets"
                                        : "say where to write with -o NAME.xcassets");
    }
    std::error_code ignored;
    if (fs::exists(settings.catalogue, ignored) && !fs::is_directory(settings.catalogue, ignored))
        throw UsageError("-o: \"" + OnOneLine(output) + "\" is a file; a catalogue is a folder");
    settings.size = options.drawing.Size();
    settings.timeout = options.drawing.Timeout();
    settings.jobs = options.batch.Jobs();
    settings.isTemplate = options.isTemplate;
    settings.isVector = options.isVector;
    settings.groupsAreNamespaces = options.isNamespace;
    settings.isDryRun = options.dryRun;
    settings.isQuiet = options.batch.quiet;
    return settings;
}

/// "3 leftovers without a source (a, b, ...)".
std::string NameLeftovers(std::span<const std::string> leftovers) {
    constexpr size_t kMostNamed = 3;
    std::string text = CountOf(leftovers.size(), "leftover") + " without a source (";
    for (size_t i = 0; i < std::min(leftovers.size(), kMostNamed); ++i)
        text += (i == 0 ? "" : ", ") + OnOneLine(leftovers[i]);
    return text + (leftovers.size() > kMostNamed ? ", ...)" : ")");
}

/// Removes what has no source any more, if that was asked for. Returns a sentence about it.
std::string Prune(const CatalogueOptions& options, const CatalogueSettings& settings,
                  const CataloguePlan& plan, const MadeSets& made) {
    const std::string catalogue = settings.catalogue.string();
    const std::vector<std::string> leftovers = FindLeftovers(catalogue, plan.sets, made);
    if (leftovers.empty()) return {};
    const std::string named = NameLeftovers(leftovers);
    if (!options.prunes) return named + "; --prune removes " + (leftovers.size() == 1 ? "it" : "them") + "\n";
    if (!plan.isComplete) return named + " kept, because not every source could be listed\n";
    if (options.dryRun) return named + " would be removed\n";
    RemoveLeftovers(catalogue, leftovers);
    return named + " removed\n";
}

int Catalogue(const CatalogueOptions& options) {
    const CatalogueSettings settings = ReadSettings(options);
    const CataloguePlan plan = PlanCatalogue(options.icons, options.isNamespace);
    const std::string destination = OnOneLine(settings.catalogue.string());
    std::string summary;
    bool isComplete = false;
    {
        const bool showProgress = options.batch.ShowsProgress(plan.sets.size());
        BatchReport report(plan.sets.size(), showProgress);
        CatalogueWriter writer(settings, plan, report);
        writer.MakeSets();
        writer.DescribeFolders();
        std::string leftovers;
        try {
            if (writer.UnreachedCount() == 0) leftovers = Prune(options, settings, plan, writer.Made());
        } catch (const FileError& error) {
            report.Problem(error.what());
        }
        isComplete = report.Problems() + writer.UnreachedCount() == 0;
        summary = CountOf(writer.Made().size(), "image set") + ": " +
                  DescribeOutputs("file", writer.Files(), destination, options.dryRun) +
                  DescribeShortfall(report.Problems(), writer.UnreachedCount()) + "\n" + leftovers;
    }
    if (!options.batch.quiet) PrintText(summary);
    return isComplete ? kExitSuccess : kExitFailure;
}

} // namespace

void AddCatalogueCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<CatalogueOptions>();
    CLI::App* const command = tool.add_subcommand("catalogue", "Make an asset catalogue for Xcode");
    command->add_option("ICON", options->icons, "Files or folders to take drawings from")
        ->required()
        ->type_name("");
    command->add_option("-o,--output", options->output, "The catalogue")->type_name("NAME.xcassets");
    options->drawing.AddSize(*command);
    command->add_flag("--template", options->isTemplate, "Images are templates, which applications tint");
    command->add_flag("--vector", options->isVector, "Drawings in place of pictures");
    command->add_flag("--namespace", options->isNamespace, "Groups are namespaces: GROUP/NAME");
    command->add_flag("--prune", options->prunes, "Remove image sets that have no source any more");
    command->add_flag("--dry-run", options->dryRun, "Write nothing; say what would change");
    options->drawing.AddTimeout(*command);
    options->batch.Add(*command);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Catalogue(*options); }; });
}

} // namespace ozm::tool
