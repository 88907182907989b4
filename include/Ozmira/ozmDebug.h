#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmPath.h>

#include <string>

namespace ozm {

// Describes parts of the model as text, for debugging. Numbers have six decimals and a decimal point in every
// locale. The doubled ">" after a move and the inconsistent slashes of the closing tags are part of the
// format.

/// The enumerator's name, or "Unknown PathCommand::Type".
OZM_CXX_EXPORT std::string to_string(const PathCommand::Type& type);
/// The name of `Group`, `Path`, `Ellipse`, `Rect` or `Use`, or "Unknown Element::Type" for every other value.
OZM_CXX_EXPORT std::string to_string(const Element::Type& type);
/// One line, without a line feed.
OZM_CXX_EXPORT std::string to_string(const PathCommand& command);
/// One line per command.
OZM_CXX_EXPORT std::string to_string(const Path& path);
/// One line per child index.
OZM_CXX_EXPORT std::string to_string(const Group& group);
/// Includes the payload of groups and paths, but of no other type.
OZM_CXX_EXPORT std::string to_string(const Element& element);

} // namespace ozm
