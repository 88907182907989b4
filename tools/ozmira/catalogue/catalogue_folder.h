// What stands in the folder of an asset catalogue already, and what of it this tool may change.
#pragma once

#include "catalogue/catalogue_plan.h"

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace ozm::tool {

/// The folders of image sets that were made, by their paths below the catalogue, and the names of their
/// files.
using MadeSets = std::map<std::string, std::set<std::string>>;

/// The description of a folder, if it has one. Throws `FileError`, which names the file.
std::optional<std::string> ReadContents(const std::filesystem::path& folder);

/// Whether a folder has a description that another program has written. Throws like `ReadContents`.
bool IsForeign(const std::filesystem::path& folder);

/// What this tool has made in a catalogue at other times and what has no source any more: image sets that are
/// not planned, and pictures in made sets which they do not list. Sorted paths of files and folders. What
/// other programs or people have put into the catalogue is never among them.
std::vector<std::string> FindLeftovers(const std::string& catalogue, std::span<const ImageSetPlan> sets,
                                       const MadeSets& made);

/// Removes leftovers, and groups that this tool has made and that thereby become empty. A set in which there
/// are other files keeps them. Throws `FileError`.
void RemoveLeftovers(const std::string& catalogue, std::span<const std::string> leftovers);

} // namespace ozm::tool
