// The names of the folders and files in an asset catalogue.
#pragma once

#include "files/output_plan.h"

#include <array>
#include <string>
#include <string_view>

namespace ozm::tool {

/// How the name of a catalogue, a folder, ends.
inline constexpr std::string_view kCatalogueExtension = ".xcassets";

/// How the name of an image set, a folder, ends.
inline constexpr std::string_view kSetExtension = ".imageset";

/// The name of the description in every folder of a catalogue.
inline constexpr const char* kContentsName = "Contents.json";

/// How the name of what is made for the dark appearance ends, and that of its drawing: NAME~dark.svg.
inline constexpr std::string_view kDarkSuffix = "~dark";

/// Pixels per point of the pictures of a set.
inline constexpr std::array<double, 3> kScales{1, 2, 3};

/// How the names of the images of a set begin.
inline std::string ImageStem(const std::string& set, bool isDark) {
    return isDark ? set + std::string(kDarkSuffix) : set;
}

inline std::string PictureName(const std::string& stem, double scale) {
    return stem + ScaleSuffix(scale) + ".png";
}

inline std::string DrawingName(const std::string& stem) { return stem + ".svg"; }

} // namespace ozm::tool
