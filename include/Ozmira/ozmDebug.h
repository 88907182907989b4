#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/ozmPath.h>

#include <string>

namespace ozm {

// Parts of the model as text, for debugging. Numbers are in fixed notation with six decimals and a decimal
// point in every locale. The doubled ">" of a move and the mixed slashes of the closing tags belong to the
// format.

/// The enumerator's name, or "Unknown PathCommand::Type".
std::string to_string(const PathCommand::Type& type);
/// The name of `Group`, `Path`, `Ellipse`, `Rect` or `Use`, or "Unknown Element::Type" for every other value.
std::string to_string(const Element::Type& type);
/// One line without line end.
std::string to_string(const PathCommand& command);
/// One command a line.
std::string to_string(const Path& path);
/// One child index a line.
std::string to_string(const Group& group);
/// Groups and paths with their payload, other kinds without.
std::string to_string(const Element& element);

} // namespace ozm
