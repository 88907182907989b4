#pragma once

#include "files/standard_output.h"

#include <Ozmira/ozmElement.h>

#include <string>

namespace ozm::tool {

/// Writes a document as a tree for people to read: one line per element, indented by its depth, with its
/// geometry in the notation of SVG and its style.
void WriteText(StandardOutput& output, const Document& document);

/// "24 PX", "50%".
std::string FormatDimension(const Dimension& dimension);

/// "0 0 24 24".
std::string FormatRect(const Rectf& rectangle);

} // namespace ozm::tool
