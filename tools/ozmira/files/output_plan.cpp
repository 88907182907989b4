#include "files/output_plan.h"

#include "base/errors.h"
#include "base/text.h"
#include "files/output_guard.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPictureExtension = ".png", kDrawingExtension = ".svg";

bool IsHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// Pipes and devices are not drawings. A broken link is listed, so that reading it reports the problem.
bool IsFileOrBrokenLink(const fs::directory_entry& entry) {
    std::error_code ignored;
    return entry.is_regular_file(ignored) || !entry.exists(ignored);
}

/// Lists the drawings of a folder, sorted by name. Links to folders are followed at the end, where they lead
/// to a folder that has not been entered, which also ends cycles.
class FolderWalk {
public:
    FolderWalk(const fs::path& root, FileKind kind) : m_root(root), m_kind(kind) {
        Enter(root);
        for (size_t i = 0; i < m_links.size(); ++i) Enter(fs::path(m_links[i]));
        if (!m_sources.empty()) return;
        const std::string wanted = kind == FileKind::Drawing ? ".svg files" : ".png and .svg files";
        m_sources.push_back({root.string(), {}, "a folder without " + wanted + "; name one that has some"});
    }

    std::vector<Source> TakeSources() { return std::move(m_sources); }

private:
    bool IsFirstVisit(const fs::path& folder) {
        struct stat status {};
        return ::stat(folder.c_str(), &status) != 0 || m_entered.emplace(status.st_dev, status.st_ino).second;
    }

    bool IsWanted(const fs::path& path) const {
        return IsDrawingName(path.native()) ||
               (m_kind == FileKind::PictureOrDrawing && path.extension() == kPictureExtension);
    }

    void Enter(const fs::path& folder) {
        if (!IsFirstVisit(folder)) return;
        std::vector<fs::directory_entry> entries;
        std::error_code error;
        for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
            if (!IsHidden(at->path())) entries.push_back(*at);
        }
        if (error)
            m_sources.push_back(
                {folder.string(), {}, "cannot be listed: " + error.message() + "; allow reading it"});
        std::sort(entries.begin(), entries.end());
        for (const fs::directory_entry& entry : entries) {
            std::error_code ignored;
            if (entry.is_directory(ignored)) {
                if (entry.is_symlink(ignored)) {
                    m_links.push_back(entry.path());
                } else {
                    Enter(entry.path());
                }
            } else if (IsWanted(entry.path()) && IsFileOrBrokenLink(entry)) {
                const fs::path relative = entry.path().lexically_relative(m_root);
                m_sources.push_back({entry.path().string(), relative.parent_path() / relative.stem(), {}});
            }
        }
    }

    const fs::path m_root;
    const FileKind m_kind;
    std::vector<Source> m_sources;
    std::vector<fs::path> m_links; ///< Links to folders.
    std::set<std::pair<dev_t, ino_t>> m_entered;
};

} // namespace

std::vector<Source> ListFolder(const std::string& folder, FileKind kind) {
    return FolderWalk(folder, kind).TakeSources();
}

std::vector<Source> ListSources(const std::vector<std::string>& inputs) {
    if (std::count(inputs.begin(), inputs.end(), "-") > 1) {
        throw UsageError("standard input (-) can be read only once");
    }
    std::vector<Source> sources;
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (input == "-") {
            sources.push_back({input, "stdin", {}});
        } else if (fs::is_directory(input, ignored)) {
            for (Source& source : ListFolder(input, FileKind::Drawing)) sources.push_back(std::move(source));
        } else {
            sources.push_back({input, fs::path(input).stem(), {}});
        }
    }
    return sources;
}

std::string ScaleSuffix(double scale) { return scale == 1 ? "" : "@" + FormatNumber(scale) + "x"; }

namespace {

/// Splits a stem such as x@2x into x and 2. The scale is 1 if it names none.
std::pair<std::string, double> SplitScale(const std::string& stem) {
    const size_t at = stem.rfind('@');
    if (at == stem.npos || !stem.ends_with('x')) return {stem, 1};
    const double scale = ParseNumber(std::string_view(stem).substr(at + 1, stem.size() - at - 2));
    if (std::isnan(scale) || ScaleSuffix(scale) != stem.substr(at)) return {stem, 1};
    return {stem.substr(0, at), scale};
}

/// Whether an output is the process's standard output under another name, such as /dev/stdout.
bool IsStandardOutput(const std::string& output) {
    struct stat target {
    }, standard{};
    return ::stat(output.c_str(), &target) == 0 && ::fstat(STDOUT_FILENO, &standard) == 0 &&
           target.st_dev == standard.st_dev && target.st_ino == standard.st_ino;
}

enum class TargetKind { StandardOutput, File, Folder };

bool IsFolderName(const std::string& output) {
    std::error_code ignored;
    return output.ends_with('/') || fs::is_directory(output, ignored);
}

TargetKind ChooseTargetKind(const std::vector<std::string>& inputs,
                            const std::optional<std::string>& output) {
    const bool standardInputAlone = inputs.size() == 1 && inputs[0] == "-";
    if (!output) return standardInputAlone ? TargetKind::StandardOutput : TargetKind::Folder;
    if (*output == "-" || IsStandardOutput(*output)) return TargetKind::StandardOutput;
    if (IsFolderName(*output)) return TargetKind::Folder;
    std::error_code ignored;
    const bool single = inputs.size() == 1 && !fs::is_directory(inputs[0], ignored);
    return single ? TargetKind::File : TargetKind::Folder;
}

/// Throws if a picture is to have the name of a file of another format.
void CheckPictureName(const std::string& output) {
    if (IsDrawingName(output)) {
        throw UsageError("-o: \"" + OnOneLine(output) +
                         "\" has the name of a drawing, and a picture is a PNG file; put -o NAME.png or "
                         "-o DIR/ behind the files to draw");
    }
    constexpr std::string_view kForeign[] = {".avif", ".bmp", ".eps", ".gif", ".heic", ".ico", ".jpeg",
                                             ".jpg",  ".pdf", ".ps",  ".tif", ".tiff", ".webp"};
    const std::string extension = fs::path(output).extension().string();
    if (std::find(std::begin(kForeign), std::end(kForeign), extension) != std::end(kForeign)) {
        throw UsageError("-o: \"" + OnOneLine(output) + "\" would hold a PNG file; end the name in .png");
    }
}

/// Throws if the second of two inputs must be meant as the output: "render in.svg out.png".
void CheckInputNames(const std::vector<std::string>& inputs) {
    if (inputs.size() == 2 && inputs[1].ends_with(kPictureExtension) &&
        !inputs[0].ends_with(kPictureExtension)) {
        throw UsageError("\"" + OnOneLine(inputs[1]) +
                         "\" is no drawing; to write the picture there, put -o before it");
    }
}

/// What outputs with this extension are, for messages.
std::string NounOf(std::string_view extension) {
    return extension == kDrawingExtension ? "drawing" : "picture";
}

/// Throws if the name of an output folder is an existing file or was meant for a single file.
void CheckFolder(const std::string& folder, std::string_view extension) {
    std::error_code ignored;
    if (IsFolderName(folder)) return;
    if (fs::exists(folder, ignored)) {
        throw UsageError("-o: \"" + OnOneLine(folder) + "\" is a file, and several " + NounOf(extension) +
                         "s need a folder; name a folder");
    }
    if (extension == kDrawingExtension ? IsDrawingName(folder) : fs::path(folder).extension() == extension) {
        throw UsageError("-o: \"" + OnOneLine(folder) + "\" can hold one " + NounOf(extension) +
                         " only; for several, name a folder and end it with /");
    }
}

void CheckIsNoInput(const std::vector<std::string>& inputs, const std::string& target) {
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (input != "-" && fs::is_regular_file(target, ignored) && fs::equivalent(input, target, ignored)) {
            throw UsageError("-o: \"" + OnOneLine(target) + "\" is the file to draw; choose another name");
        }
    }
}

fs::path FileTarget(const fs::path& output, double scale) {
    const std::string suffix = ScaleSuffix(scale);
    return output.parent_path() / (output.stem().string() + suffix + output.extension().string());
}

/// The extension of an output in a folder: that of outputs in general, or a drawing's own if they are
/// drawings.
std::string ExtensionFor(const std::string& source, std::string_view extension) {
    const bool keepsOwn = extension == kDrawingExtension && IsDrawingName(source);
    return keepsOwn ? fs::path(source).extension().string() : std::string(extension);
}

std::string FolderTarget(const fs::path& folder, const fs::path& stem, double scale,
                         std::string_view extension) {
    return (folder / stem).lexically_normal().string() + ScaleSuffix(scale) + std::string(extension);
}

/// The targets of a source for each scale, except scales that a source such as x@2x is made for; that source
/// has the one target.
std::vector<Target> FolderTargets(const fs::path& folder, const fs::path& stem,
                                  const std::unordered_set<std::string>& stems,
                                  std::span<const double> scales, std::string_view extension) {
    const auto [base, own] = SplitScale(stem.native());
    if (own != 1 && stems.contains(base) && std::find(scales.begin(), scales.end(), own) != scales.end()) {
        return {{FolderTarget(folder, base, own, extension), own, true}};
    }
    std::vector<Target> targets;
    for (const double scale : scales) {
        if (scale != 1 && stems.contains(stem.native() + ScaleSuffix(scale))) continue;
        targets.push_back({FolderTarget(folder, stem, scale, extension), scale});
    }
    return targets;
}

/// Of two sources with the same target, gives the second one a problem. Removes sources that are named twice.
void ResolveCollisions(std::vector<IconPlan>& icons) {
    std::unordered_map<std::string_view, const IconPlan*> owners;
    std::vector<bool> repeated(icons.size());
    for (size_t i = 0; i < icons.size(); ++i) {
        for (const auto& [target, scale, hasOwnDrawing] : icons[i].targets) {
            const auto [owner, isNew] = owners.try_emplace(target, &icons[i]);
            if (isNew || owner->second == &icons[i]) continue;
            const std::string& other = owner->second->source;
            if (fs::path(other).lexically_normal() == fs::path(icons[i].source).lexically_normal()) {
                repeated[i] = true;
            } else {
                icons[i].problem = "would overwrite " + OnOneLine(target) + ", made from " +
                                   InputName(other) +
                                   "; rename one of them or draw them into different folders";
            }
            break;
        }
    }
    size_t index = 0;
    std::erase_if(icons, [&](const IconPlan&) { return repeated[index++]; });
}

OutputPlan Plan(const std::vector<std::string>& inputs, const std::optional<std::string>& output,
                std::span<const double> scales, std::string_view extension) {
    const TargetKind kind = ChooseTargetKind(inputs, output);
    const std::string folder = output.value_or("");
    OutputPlan plan;
    plan.toStandardOutput = kind == TargetKind::StandardOutput;
    if (extension == kPictureExtension && output && !plan.toStandardOutput && !IsFolderName(folder)) {
        CheckPictureName(folder);
    }
    if (kind == TargetKind::Folder && output) CheckFolder(folder, extension);

    std::vector<Source> sources = ListSources(inputs);
    plan.destination = output ? OnOneLine(folder) : "the current folder";
    if (plan.toStandardOutput && (sources.size() > 1 || scales.size() > 1)) {
        throw UsageError("standard output can hold one " + NounOf(extension) + " only; name one file" +
                         (scales.size() > 1 ? " and one scale" : "") +
                         ", or a folder to write to with -o DIR/");
    }

    std::unordered_set<std::string> stems;
    for (const Source& source : sources) stems.insert(source.stem.native());
    for (Source& source : sources) {
        IconPlan icon{std::move(source.path), {}, std::move(source.problem)};
        if (!icon.problem.empty()) {
            // Nothing is drawn.
        } else if (kind == TargetKind::StandardOutput) {
            icon.targets.push_back({"-", scales[0]});
        } else if (kind == TargetKind::Folder) {
            icon.targets =
                FolderTargets(folder, source.stem, stems, scales, ExtensionFor(icon.source, extension));
        } else {
            for (const double scale : scales) {
                icon.targets.push_back(
                    {scales.size() == 1 ? folder : FileTarget(folder, scale).string(), scale});
                CheckIsNoInput(inputs, icon.targets.back().path);
            }
        }
        plan.icons.push_back(std::move(icon));
    }
    ResolveCollisions(plan.icons);
    return plan;
}

} // namespace

std::vector<std::string> SourcesOf(const OutputPlan& plan) {
    std::vector<std::string> sources;
    sources.reserve(plan.icons.size());
    for (const IconPlan& icon : plan.icons) sources.push_back(icon.source);
    return sources;
}

std::vector<std::string> FoldersOf(const OutputPlan& plan) {
    std::set<std::string> folders;
    for (const IconPlan& icon : plan.icons) {
        for (const Target& target : icon.targets)
            folders.insert(fs::path(target.path).parent_path().string());
    }
    return {folders.begin(), folders.end()};
}

OutputPlan PlanOutput(const std::vector<std::string>& inputs, const std::optional<std::string>& output,
                      std::span<const double> scales) {
    if (!output) CheckInputNames(inputs);
    return Plan(inputs, output, scales, kPictureExtension);
}

OutputPlan PlanDrawings(const std::vector<std::string>& inputs, const std::optional<std::string>& output) {
    const double scale = 1;
    OutputPlan plan = Plan(inputs, output, {&scale, 1}, kDrawingExtension);
    for (const IconPlan& icon : plan.icons) {
        std::error_code ignored;
        if (icon.targets.empty() || icon.source == "-" || icon.targets[0].path == "-") continue;
        if (!fs::equivalent(icon.source, icon.targets[0].path, ignored)) continue;
        throw UsageError("-o: \"" + OnOneLine(icon.targets[0].path) +
                         "\" is a file to rewrite; choose another folder, or --in-place");
    }
    return plan;
}

OutputPlan PlanInPlace(const std::vector<std::string>& inputs) {
    OutputPlan plan;
    plan.destination = "their places";
    for (Source& source : ListSources(inputs)) {
        if (source.path == "-") throw UsageError("--in-place: standard input (-) has no place to write to");
        plan.icons.push_back({source.path, {{source.path}}, std::move(source.problem)});
    }
    ResolveCollisions(plan.icons);
    return plan;
}

std::vector<IconPlan> ListInputs(const std::vector<std::string>& inputs) {
    std::vector<IconPlan> icons;
    for (Source& source : ListSources(inputs))
        icons.push_back({std::move(source.path), {}, std::move(source.problem)});
    return icons;
}

} // namespace ozm::tool
