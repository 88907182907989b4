#pragma once

#include "picture/decoded_picture.h"

#include <string_view>

namespace ozm::tool {

/// The size of the picture in a PNG file, which is not decoded. Throws like `DecodePNG`.
PictureSize SizeOfPNG(std::string_view file);

/// Decodes a PNG file of any kind to eight bits. Colour profiles and gamma are ignored. Throws `FileError` if
/// it is damaged, or larger than the pictures that this tool draws, and `std::bad_alloc`.
DecodedPicture DecodePNG(std::string_view file);

} // namespace ozm::tool
