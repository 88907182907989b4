#pragma once

#include <string>
#include <vector>

namespace ozm::tool {

/// A picture or drawing that stands at the same place in two folders, or in one of them.
struct PicturePair {
    std::string name;    ///< Its path below the folders.
    std::string oldPath; ///< Empty if it is new.
    std::string newPath; ///< Empty if it is gone.
    std::string problem; ///< If not empty, why a folder could not be listed; the name is then the folder's.
};

/// Pairs the pictures (.png) and drawings (.svg, .svgz) of two folders and their sub-folders, sorted by name;
/// or two files, whatever they are called. Throws `UsageError` if one of the two does not exist, or if one is
/// a folder and the other is not.
std::vector<PicturePair> PairPictures(const std::string& oldPath, const std::string& newPath);

} // namespace ozm::tool
