#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/ozmPath.h>

#include <string>

namespace ozm {

// Describes parts of the model as text, for debugging. Numbers have six decimals and a decimal point in every
// locale. The doubled ">" after a move and the inconsistent slashes of the closing tags are part of the
// format.

/// The enumerator's name, or "Unknown PathCommand::Type".
std::string to_string(const PathCommand::Type& type);
/// The name of `Group`, `Path`, `Ellipse`, `Rect` or `Use`, or "Unknown Element::Type" for every other value.
std::string to_string(const Element::Type& type);
/// One line, without a line feed.
std::string to_string(const PathCommand& command);
/// One line per command.
std::string to_string(const Path& path);
/// One line per child index.
std::string to_string(const Group& group);
/// Includes the payload of groups and paths, but of no other type.
std::string to_string(const Element& element);

} // namespace ozm
