// Decides which image sets an asset catalogue holds, from which files they are made and where they stand.
#pragma once

#include <string>
#include <vector>

namespace ozm::tool {

/// An image set, or a file that none can be made of.
struct ImageSetPlan {
    std::string name;       ///< Of the set within its group.
    std::string folder;     ///< Its path below the catalogue, such as "navigation/home.imageset".
    std::string source;     ///< The drawing of the set.
    std::string darkSource; ///< The drawing for the dark appearance; empty if there is none.
    std::string problem;    ///< If not empty, why nothing can be made of `source`.
};

struct CataloguePlan {
    std::vector<ImageSetPlan> sets; ///< In the order of the inputs, the files of a folder sorted by name.
    bool isComplete = true;         ///< Every folder among the inputs could be listed and has drawings.
};

/// Plans the image sets of files and folders (all their drawings, including those in sub-folders, which
/// become groups). NAME~dark.svg is the dark appearance of NAME.svg beside it. What lies in an asset
/// catalogue is no source, so that a catalogue may stand among the drawings.
///
/// Names that assets can't have are problems, and so are names that another set has: within the whole
/// catalogue, or within the group if groups are namespaces. Their case does not count, because the file
/// systems of Macs do not tell it apart. Throws `UsageError` for standard input, which has no name.
CataloguePlan PlanCatalogue(const std::vector<std::string>& inputs, bool groupsAreNamespaces);

} // namespace ozm::tool
