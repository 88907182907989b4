// Which picture is made of which file.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// One file and the pictures to make of it.
struct IconPlan {
    std::string source;               ///< Path, or "-" for standard input.
    std::vector<std::string> targets; ///< One path for each scale, or "-" for standard output.
    std::string problem;              ///< When not empty: why nothing can be made of the source.
};

struct OutputPlan {
    std::vector<IconPlan> icons; ///< In the order of the arguments, the files of a folder by name.
    bool toStandardOutput = false;
    std::string destination; ///< What messages call the file or folder that pictures go to.
};

/// Plans the pictures of files, of folders (all their .svg files, also in sub-folders, whose structure is
/// kept) and of standard input ("-").
///
/// Without `output`, pictures go into the current folder, a lone "-" to standard output. "-" as output is
/// standard output and takes one picture. An output that is a folder, ends in "/", or takes the pictures of
/// several inputs or of a folder is a folder. Any other output is the name of the one picture, or, with
/// several scales, the name to put each scale in.
///
/// A second file that would have the same target as one before gets a `problem`; the same file named twice is
/// planned once. Throws `UsageError` for outputs that can't be meant, such as one that is an input.
OutputPlan PlanOutput(const std::vector<std::string>& inputs, const std::optional<std::string>& output,
                      std::span<const double> scales);

/// Plans in the same way one drawing for each input, called as the input is. No output may be an input.
OutputPlan PlanDrawings(const std::vector<std::string>& inputs, const std::optional<std::string>& output);
/// Plans to put drawings in the place of the inputs, which must be files and folders.
OutputPlan PlanInPlace(const std::vector<std::string>& inputs);

/// The files of a list of files and folders in the order in which a plan has them; targets are empty.
std::vector<IconPlan> ListInputs(const std::vector<std::string>& inputs);

} // namespace ozm::tool
