#pragma once

#include <Ozmira/ozmElement.h>

#include <string>
#include <string_view>

namespace ozm::tool {

/// The text of a drawing with another width and height on its `svg` element, and with the view box of the
/// document that was parsed from it, so that it is scaled. Everything else stays byte for byte. The text must
/// be well-formed, as that of a document with elements is.
std::string WithSize(std::string_view text, const Document& document, double width, double height);

} // namespace ozm::tool
