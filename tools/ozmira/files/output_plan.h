// Decides which pictures to draw from which files, and where they go.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// A file and the pictures to draw from it.
struct IconPlan {
    std::string source;               ///< Path, or "-" for standard input.
    std::vector<std::string> targets; ///< One path for each scale, or "-" for standard output.
    std::string problem;              ///< If not empty, why nothing can be drawn from the source.
};

struct OutputPlan {
    std::vector<IconPlan> icons; ///< In the order of the arguments; the files of a folder are sorted by name.
    bool toStandardOutput = false;
    std::string destination; ///< The name in messages of the file or folder that pictures go to.
};

/// Plans the pictures of files, of folders (all their .svg files, including those in sub-folders, whose
/// structure is kept) and of standard input ("-").
///
/// Without `output`, pictures go into the current folder, but the picture of standard input alone goes to
/// standard output. The output "-" is standard output, which takes one picture. An output is a folder if it
/// exists as one, if it ends in "/", or if the inputs are several or a folder. Any other output is the name
/// of the single picture or, with several scales, the name that each scale is inserted into.
///
/// A file that would have the same target as an earlier one gets a `problem`; a file that is named twice is
/// planned once. Throws `UsageError` for outputs that can't be intended, such as an input file.
OutputPlan PlanOutput(const std::vector<std::string>& inputs, const std::optional<std::string>& output,
                      std::span<const double> scales);

/// Plans in the same way one drawing for each input, called as the input is. No output may be an input.
OutputPlan PlanDrawings(const std::vector<std::string>& inputs, const std::optional<std::string>& output);
/// Plans to put drawings in the place of the inputs, which must be files and folders.
OutputPlan PlanInPlace(const std::vector<std::string>& inputs);

/// The files of a list of files and folders in the order in which a plan has them; targets are empty.
std::vector<IconPlan> ListInputs(const std::vector<std::string>& inputs);

} // namespace ozm::tool
