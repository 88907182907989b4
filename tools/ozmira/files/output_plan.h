// Decides which pictures to draw from which files, and where they go.
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// A file among the inputs.
struct Source {
    std::string path;           ///< Or "-" for standard input.
    std::filesystem::path stem; ///< Its path below the folder that was named, without extension.
    std::string problem;        ///< If not empty, why nothing can be read from it.
};

/// The files of a folder that are listed: drawings, which are .svg and .svgz, or these and .png.
enum class FileKind { Drawing, PictureOrDrawing };

/// Lists the files of a folder and its sub-folders, sorted by name. If there are none, the result is the
/// folder itself with a problem.
std::vector<Source> ListFolder(const std::string& folder, FileKind kind);

/// Lists the files among the inputs, of folders all their drawings, including those in sub-folders, sorted by
/// name. Throws `UsageError` if standard input ("-") is among them twice.
std::vector<Source> ListSources(const std::vector<std::string>& inputs);

/// The part of a picture's name that states its scale in pixels per point: "@2x"; empty for 1.
std::string ScaleSuffix(double scale);

/// Where an output goes.
struct Target {
    std::string path; ///< "-" for standard output.
    double scale = 1; ///< Pixels per point.
    bool hasOwnDrawing =
        false; ///< The source was made for this scale, so its own size is that of the picture.
};

/// A file and the pictures to draw from it.
struct IconPlan {
    std::string source;          ///< Path, or "-" for standard input.
    std::vector<Target> targets; ///< One for each scale.
    std::string problem;         ///< If not empty, why nothing can be drawn from the source.
};

struct OutputPlan {
    std::vector<IconPlan> icons; ///< In the order of the arguments; the files of a folder are sorted by name.
    bool toStandardOutput = false;
    std::string destination; ///< The name in messages of the file or folder that pictures go to.
};

/// The sources of a plan.
std::vector<std::string> SourcesOf(const OutputPlan& plan);

/// The folders of all targets, each once.
std::vector<std::string> FoldersOf(const OutputPlan& plan);

/// Plans the pictures of files, of folders (all their .svg and .svgz files, including those in sub-folders,
/// whose structure is kept, and in folders that links lead to, each folder once) and of standard input ("-").
///
/// A file such as x@2x.svg beside x.svg is the drawing for scale 2, and takes the place of the other there.
///
/// Without `output`, pictures go into the current folder, but the picture of standard input alone goes to
/// standard output. The output "-", or another name of standard output such as /dev/stdout, takes one
/// picture. An output is a folder if it exists as one, if it ends in "/", or if the inputs are several or a
/// folder. Any other output is the name of the single picture or, with several scales, the name that each
/// scale is inserted into.
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
