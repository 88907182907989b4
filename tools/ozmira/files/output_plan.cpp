#include "files/output_plan.h"

#include "base/errors.h"
#include "base/text.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <unordered_map>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

/// A file to draw, and the path of its picture below the output folder, without scale and extension.
struct Source {
    std::string path;
    fs::path stem;
    std::string problem;
};

bool HasSVGExtension(const fs::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".svg";
}

bool IsHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// Pipes and devices are not drawings. A broken link is listed, so that reading it reports the problem.
bool IsFileOrBrokenLink(const fs::directory_entry& entry) {
    std::error_code ignored;
    return entry.is_regular_file(ignored) || !entry.exists(ignored);
}

/// Lists the drawings of a folder, sorted by name. Links to folders are not followed, because they could form
/// a cycle.
class FolderWalk {
public:
    explicit FolderWalk(const fs::path& root) : m_root(root) {
        Enter(root);
        if (m_sources.empty())
            m_sources.push_back({root.string(), {}, "a folder without .svg files; name one that has some"});
    }

    std::vector<Source> TakeSources() { return std::move(m_sources); }

private:
    void Enter(const fs::path& folder) {
        std::vector<fs::directory_entry> entries;
        std::error_code error;
        for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
            if (!IsHidden(at->path())) entries.push_back(*at);
        }
        if (error) m_sources.push_back({folder.string(), {}, "cannot be listed: " + error.message()});
        std::sort(entries.begin(), entries.end());
        for (const fs::directory_entry& entry : entries) {
            std::error_code ignored;
            if (entry.is_directory(ignored)) {
                if (!entry.is_symlink(ignored)) Enter(entry.path());
            } else if (HasSVGExtension(entry.path()) && IsFileOrBrokenLink(entry)) {
                const fs::path relative = entry.path().lexically_relative(m_root);
                m_sources.push_back({entry.path().string(), relative.parent_path() / relative.stem(), {}});
            }
        }
    }

    const fs::path m_root;
    std::vector<Source> m_sources;
};

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
            for (Source& source : FolderWalk(input).TakeSources()) sources.push_back(std::move(source));
        } else {
            sources.push_back({input, fs::path(input).stem(), {}});
        }
    }
    return sources;
}

/// The part of a picture's name that states its scale.
std::string ScaleSuffix(double scale) { return scale == 1 ? "" : "@" + FormatNumber(scale) + "x"; }

enum class OutputKind { StandardOutput, File, Folder };

bool IsFolderName(const std::string& output) {
    std::error_code ignored;
    return output.ends_with('/') || fs::is_directory(output, ignored);
}

OutputKind ChooseOutputKind(const std::vector<std::string>& inputs,
                            const std::optional<std::string>& output) {
    const bool standardInputAlone = inputs.size() == 1 && inputs[0] == "-";
    if (!output) return standardInputAlone ? OutputKind::StandardOutput : OutputKind::Folder;
    if (*output == "-") return OutputKind::StandardOutput;
    if (IsFolderName(*output)) return OutputKind::Folder;
    std::error_code ignored;
    const bool single = inputs.size() == 1 && !fs::is_directory(inputs[0], ignored);
    return single ? OutputKind::File : OutputKind::Folder;
}

/// Throws if the name of an output folder is an existing file or was meant for a single file.
void CheckFolder(const std::string& folder, std::string_view extension) {
    std::error_code ignored;
    if (IsFolderName(folder)) return;
    if (fs::exists(folder, ignored)) {
        throw UsageError("-o: \"" + OnOneLine(folder) +
                         "\" is a file, and several pictures need a folder; name a folder");
    }
    if (fs::path(folder).extension() == extension) {
        throw UsageError("-o: \"" + OnOneLine(folder) +
                         "\" can hold one picture only; for several, name a folder and end it with /");
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

std::string FolderTarget(const fs::path& folder, const fs::path& stem, double scale,
                         std::string_view extension) {
    return (folder / stem).lexically_normal().string() + ScaleSuffix(scale) + std::string(extension);
}

/// Of two sources with the same target, gives the second one a problem. Removes sources that are named twice.
void ResolveCollisions(std::vector<IconPlan>& icons) {
    std::unordered_map<std::string_view, const IconPlan*> owners;
    std::vector<bool> repeated(icons.size());
    for (size_t i = 0; i < icons.size(); ++i) {
        for (const std::string& target : icons[i].targets) {
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
    const OutputKind kind = ChooseOutputKind(inputs, output);
    const std::string folder = output.value_or("");
    if (kind == OutputKind::Folder && output) CheckFolder(folder, extension);

    std::vector<Source> sources = ListSources(inputs);
    OutputPlan plan;
    plan.toStandardOutput = kind == OutputKind::StandardOutput;
    plan.destination = output ? OnOneLine(folder) : "the current folder";
    if (plan.toStandardOutput && (sources.size() > 1 || scales.size() > 1)) {
        throw UsageError(
            "standard output can hold one picture only; name one file and one scale, or a folder "
            "to write to with -o DIR/");
    }

    for (Source& source : sources) {
        IconPlan icon{std::move(source.path), {}, std::move(source.problem)};
        if (icon.problem.empty()) {
            for (const double scale : scales) {
                switch (kind) {
                case OutputKind::StandardOutput: icon.targets.push_back("-"); break;
                case OutputKind::File:
                    icon.targets.push_back(scales.size() == 1 ? folder : FileTarget(folder, scale).string());
                    CheckIsNoInput(inputs, icon.targets.back());
                    break;
                case OutputKind::Folder:
                    icon.targets.push_back(FolderTarget(folder, source.stem, scale, extension));
                    break;
                }
            }
        }
        plan.icons.push_back(std::move(icon));
    }
    ResolveCollisions(plan.icons);
    return plan;
}

} // namespace

OutputPlan PlanOutput(const std::vector<std::string>& inputs, const std::optional<std::string>& output,
                      std::span<const double> scales) {
    return Plan(inputs, output, scales, ".png");
}

OutputPlan PlanDrawings(const std::vector<std::string>& inputs, const std::optional<std::string>& output) {
    const double scale = 1;
    OutputPlan plan = Plan(inputs, output, {&scale, 1}, ".svg");
    for (const IconPlan& icon : plan.icons) {
        std::error_code ignored;
        if (icon.targets.empty() || icon.source == "-" || icon.targets[0] == "-") continue;
        if (!fs::equivalent(icon.source, icon.targets[0], ignored)) continue;
        throw UsageError("-o: \"" + OnOneLine(icon.targets[0]) +
                         "\" is a file to rewrite; choose another folder, or --in-place");
    }
    return plan;
}

OutputPlan PlanInPlace(const std::vector<std::string>& inputs) {
    OutputPlan plan;
    plan.destination = "their places";
    for (Source& source : ListSources(inputs)) {
        if (source.path == "-") throw UsageError("--in-place: standard input (-) has no place to write to");
        plan.icons.push_back({source.path, {source.path}, std::move(source.problem)});
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
