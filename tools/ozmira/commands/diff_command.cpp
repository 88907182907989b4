#include "base/errors.h"
#include "base/text.h"
#include "commands/arguments.h"
#include "commands/commands.h"
#include "commands/common_options.h"
#include "compare/changed_icons.h"
#include "compare/picture_comparison.h"
#include "compare/picture_pairs.h"
#include "files/standard_output.h"
#include "page/comparison_page.h"
#include "page/page_file.h"
#include "report/batch_report.h"
#include "report/json_writer.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {
namespace {

/// The options as written.
struct DiffOptions {
    std::string oldPath, newPath;
    std::optional<std::string> threshold, scale, output;
    DrawingOptions drawing;
    BatchOptions batch;
    bool json = false;
};

constexpr const char* kFooter =
    R"(Compares the pictures (.png) and drawings (.svg) of two folders that have the
same name, or two files. Drawings are drawn first. Prints what is new, gone or
changed, worst first, and by how much: the mean difference of red, green, blue
and alpha over all pixels, from 0 to 255.

Exit status: 0 nothing is gone, and nothing differs by more than --threshold;
1 something is or does, or could not be compared; 2 wrong usage. A picture of
another size differs by more than any threshold.

With -o, a page shows old beside new with a slider, blinking or the difference.

Examples:
  ozmira diff pictures.old/ pictures/
  ozmira diff main/icons/ icons/ --height 48 --scale 2
  ozmira diff old.png new.png --threshold 0.5
  ozmira diff main/icons/ icons/ --height 48 -o changes.html
  ozmira diff --json old/ new/ | jq -r '.[] | select(.state == "gone").file'
)";

using State = PictureComparison::State;

bool IsBeyond(const PictureComparison& result, double threshold) {
    return result.state == State::Resized ||
           (result.state == State::Changed && result.difference.mean > threshold);
}

/// A difference to a hundredth.
std::string Hundredths(double mean) {
    constexpr double kSmallest = 0.01;
    return mean < kSmallest ? "less than 0.01" : FormatNumber(std::round(mean * 100) / 100);
}

std::string SizeText(const PictureSize& size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string Describe(const PictureComparison& result) {
    const std::string name = OnOneLine(result.name);
    switch (result.state) {
    case State::New: return name + ": new\n";
    case State::Gone: return name + ": gone\n";
    case State::Resized:
        return name + ": was " + SizeText(result.oldSize) + " pixels and is " + SizeText(result.newSize) +
               "\n";
    case State::Changed:
        return name + ": differs by " + Hundredths(result.difference.mean) + ", in " +
               FormatCount(result.difference.pixelCount) + " of " +
               CountOf(result.newSize.width * result.newSize.height, "pixel") + " and by up to " +
               std::to_string(result.difference.largest) + "\n";
    case State::Same:
    case State::Failed: break;
    }
    return {};
}

void WriteSize(JSONWriter& json, std::string_view key, const PictureSize& size) {
    json.Key(key);
    json.Object([&] {
        json.Member("width", size.width);
        json.Member("height", size.height);
    });
}

void WriteResult(JSONWriter& json, const PictureComparison& result) {
    json.Object([&] {
        json.Member("file", result.name);
        json.Member("state", NameOf(result.state));
        if (result.state == State::Failed) json.Member("problem", result.problem);
        if (result.state != State::Changed && result.state != State::Resized) return;
        if (result.state == State::Changed) {
            json.Member("difference", result.difference.mean);
            json.Member("largest", static_cast<unsigned>(result.difference.largest));
            json.Member("pixels", result.difference.pixelCount);
        }
        WriteSize(json, "old", result.oldSize);
        WriteSize(json, "new", result.newSize);
    });
}

/// What is gone, then what changed, worst first, then what is new; equal ones by name.
void SortWorstFirst(std::vector<PictureComparison>& results) {
    const auto badness = [](const PictureComparison& result) {
        constexpr double kMost = 255;
        switch (result.state) {
        case State::Gone: return kMost + 2;
        case State::Resized: return kMost + 1;
        case State::Changed: return result.difference.mean;
        default: return -1.0;
        }
    };
    std::stable_sort(results.begin(), results.end(),
                     [&](const auto& a, const auto& b) { return badness(a) > badness(b); });
}

std::string Summary(std::span<const PictureComparison> results, double threshold) {
    const auto count = [&](auto... states) {
        return std::count_if(results.begin(), results.end(),
                             [&](const auto& result) { return ((result.state == states) || ...); });
    };
    const auto changed = static_cast<uint64_t>(count(State::Changed, State::Resized));
    const auto beyond = static_cast<uint64_t>(
        std::count_if(results.begin(), results.end(), [&](const auto& r) { return IsBeyond(r, threshold); }));
    std::string text = CountOf(results.size(), "picture") + " compared: " + FormatCount(changed) + " changed";
    if (threshold > 0 && changed > 0)
        text += " (" + FormatCount(beyond) + " by more than " + FormatNumber(threshold) + ")";
    const std::pair<State, const char*> kOthers[] = {
        {State::New, "new"}, {State::Gone, "gone"}, {State::Failed, "failed"}};
    for (const auto& [state, name] : kOthers) {
        const auto number = static_cast<uint64_t>(count(state));
        if (number > 0) text += ", " + FormatCount(number) + " " + name;
    }
    return text + "\n";
}

/// Writes a page of what is not the same.
void WriteChanges(const std::string& output, const std::vector<PicturePair>& pairs,
                  const ComparisonSettings& settings, std::span<const PictureComparison> results) {
    PageSettings page;
    page.title = "Changes";
    page.columns = {"Old", "New"};
    page.scales = {settings.scale};
    std::vector<std::string> sources;
    for (const PicturePair& pair : pairs) {
        for (const std::string* path : {&pair.oldPath, &pair.newPath}) {
            if (!path->empty()) sources.push_back(*path);
        }
    }
    WritePage(output, MakePage(page, DescribeChanges(results, settings)), sources);
}

void Print(const DiffOptions& options, std::span<const PictureComparison> results, double threshold) {
    StandardOutput output;
    if (options.json) {
        JSONWriter json(output);
        json.Array([&] {
            for (const PictureComparison& result : results) {
                if (result.state != State::Same) WriteResult(json, result);
            }
        });
        output.Put('\n');
    } else if (!options.batch.quiet) {
        for (const PictureComparison& result : results) output.Write(Describe(result));
        output.Write(Summary(results, threshold));
    }
    output.Flush();
}

int Diff(const DiffOptions& options) {
    ComparisonSettings settings;
    settings.size = options.drawing.Size();
    if (options.scale) settings.scale = ParseScale("--scale", *options.scale);
    settings.timeout = options.drawing.Timeout();
    settings.jobs = options.batch.Jobs();
    const bool isPagePrinted = options.output == "-";
    if (options.output) CheckPageName(*options.output);
    if (isPagePrinted && options.json) throw UsageError("--json and -o - both print; give the page a name");
    const double threshold = options.threshold ? ParseThreshold("--threshold", *options.threshold) : 0;
    const std::vector<PicturePair> pairs = PairPictures(options.oldPath, options.newPath);
    std::vector<PictureComparison> results;
    {
        BatchReport report(pairs.size(), options.batch.ShowsProgress(pairs.size()));
        results = ComparePictures(pairs, settings, report);
    }
    SortWorstFirst(results);
    if (!isPagePrinted) Print(options, results, threshold);
    if (options.output) WriteChanges(*options.output, pairs, settings, results);
    const bool isGuardTripped = std::any_of(results.begin(), results.end(), [&](const auto& result) {
        return result.state == State::Gone || result.state == State::Failed || IsBeyond(result, threshold);
    });
    return isGuardTripped ? kExitFailure : kExitSuccess;
}

} // namespace

void AddDiffCommand(CLI::App& tool, Action& action) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* const command = tool.add_subcommand("diff", "Compare two folders of pictures or drawings");
    command->add_option("OLD", options->oldPath, "Folder or file before a change")->required()->type_name("");
    command->add_option("NEW", options->newPath, "Folder or file after it")->required()->type_name("");
    command->add_option("--threshold", options->threshold, "Largest difference that is let pass, 0 to 255")
        ->type_name("D");
    command->add_option("-o,--output", options->output, "Make a page of the changes; - is standard output")
        ->type_name("PATH");
    options->drawing.AddSize(*command);
    command->add_option("--scale", options->scale, "Pixels per point of drawings, 0.01 to 100")
        ->type_name("S");
    command->add_flag("--json", options->json, "Print JSON");
    options->drawing.AddTimeout(*command);
    options->batch.Add(*command);
    command->footer(kFooter);
    command->callback([options, &action] { action = [options] { return Diff(*options); }; });
}

} // namespace ozm::tool
