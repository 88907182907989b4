// The descriptions in an asset catalogue: the file Contents.json of every folder. They are laid out as Xcode
// does it, so that editing there changes few lines.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// An image of a set.
struct ImageEntry {
    std::string fileName;
    int scale = 0;       ///< Pixels per point; 0 if the image serves all scales.
    bool isDark = false; ///< For the dark appearance.
};

/// How an application uses the images of a set.
struct ImageSetProperties {
    bool isTemplate = false;      ///< Only the alpha counts, which is tinted.
    bool preservesVector = false; ///< Keep the vector data for other sizes.
};

/// The description of an image set.
std::string ImageSetContents(std::span<const ImageEntry> images, const ImageSetProperties& properties);

/// The description of a group, or of the catalogue. In a group with a namespace, the group's name comes
/// before the names of its assets, as in "navigation/home".
std::string FolderContents(bool providesNamespace);

/// True if this tool has written a description, however it was laid out since.
bool IsOwnContents(std::string_view json);

/// True if a description of a group says that the group is a namespace.
bool ProvidesNamespace(std::string_view json);

} // namespace ozm::tool
