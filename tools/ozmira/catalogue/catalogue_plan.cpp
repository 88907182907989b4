#include "catalogue/catalogue_plan.h"

#include "base/errors.h"
#include "base/text.h"
#include "catalogue/asset_name.h"
#include "catalogue/set_names.h"
#include "files/output_plan.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

bool IsInCatalogue(const fs::path& stem) {
    return std::any_of(stem.begin(), stem.end(),
                       [](const fs::path& part) { return part.extension() == kCatalogueExtension; });
}

/// Why a drawing can't become an asset because of the names of its groups and its own; empty if it can.
std::string NameProblem(const fs::path& group, const std::string& name) {
    for (const fs::path& part : group) {
        const std::string problem = WhyNoGroupName(part.string());
        if (problem.empty()) continue;
        return "the folder \"" + OnOneLine(part.string()) + "\" can't be a group of assets: " + problem +
               "; rename it";
    }
    const std::string problem = WhyNoAssetName(name);
    if (problem.empty()) return {};
    return "\"" + OnOneLine(name) + "\" can't be the name of an asset: " + problem + "; rename the file";
}

class Planner {
public:
    explicit Planner(bool groupsAreNamespaces) : m_groupsAreNamespaces(groupsAreNamespaces) {}

    void Add(const Source& source) {
        const bool isRepeated = !m_paths.insert(fs::path(source.path).lexically_normal().string()).second;
        if (isRepeated || IsInCatalogue(source.stem)) return;
        if (!source.problem.empty()) {
            m_plan.isComplete = false;
            m_plan.sets.push_back({{}, {}, source.path, {}, source.problem});
        } else if (source.stem.filename().string().ends_with(kDarkSuffix)) {
            m_darkSources.push_back(source);
        } else {
            AddLight(source);
        }
    }

    /// To be called once, when all sources are added.
    CataloguePlan TakePlan() {
        for (const Source& source : m_darkSources) AddDark(source);
        return std::move(m_plan);
    }

private:
    void AddLight(const Source& source) {
        const fs::path group = source.stem.parent_path();
        const std::string name = source.stem.filename().string();
        std::string problem = NameProblem(group, name);
        if (problem.empty()) problem = Claim(group, name, source.path);
        if (problem.empty()) m_indices.emplace(source.stem.string(), m_plan.sets.size());
        m_plan.sets.push_back(
            {name, (group / (name + std::string(kSetExtension))).string(), source.path, {}, problem});
    }

    /// Takes a name for a set. Says what is wrong if another set has it.
    std::string Claim(const fs::path& group, const std::string& name, const std::string& path) {
        const std::string fullName =
            InLowerCase((m_groupsAreNamespaces ? group / name : fs::path(name)).string());
        const auto [owner, isNew] = m_owners.emplace(fullName, path);
        if (isNew) return {};
        return "would be the asset \"" + OnOneLine(name) + "\", as is " + InputName(owner->second) +
               "; rename one of them" +
               (m_groupsAreNamespaces ? "" : ", or make groups namespaces with --namespace");
    }

    void AddDark(const Source& source) {
        std::string stem = source.stem.string();
        stem.resize(stem.size() - kDarkSuffix.size());
        const auto found = m_indices.find(stem);
        std::string problem;
        if (found == m_indices.end()) {
            problem = "is the dark appearance of \"" + OnOneLine(fs::path(stem).filename().string()) +
                      "\", of which no set is made; put the drawing for light beside it, or rename it";
        } else if (ImageSetPlan& set = m_plan.sets[found->second]; set.darkSource.empty()) {
            set.darkSource = source.path;
        } else {
            problem =
                "would be the dark appearance that " + InputName(set.darkSource) + " is; rename one of them";
        }
        if (!problem.empty()) m_plan.sets.push_back({{}, {}, source.path, {}, problem});
    }

    const bool m_groupsAreNamespaces;
    std::set<std::string> m_paths;
    std::map<std::string, std::string> m_owners; ///< Names in lower case, and the files that have them.
    std::map<std::string, size_t> m_indices;     ///< Of the sets that can be made, by stem.
    std::vector<Source> m_darkSources;
    CataloguePlan m_plan;
};

} // namespace

CataloguePlan PlanCatalogue(const std::vector<std::string>& inputs, bool groupsAreNamespaces) {
    if (std::find(inputs.begin(), inputs.end(), "-") != inputs.end())
        throw UsageError("standard input (-) has no name for an asset; name a file");
    Planner planner(groupsAreNamespaces);
    for (const Source& source : ListSources(inputs)) planner.Add(source);
    return planner.TakePlan();
}

} // namespace ozm::tool
