// The names of enumerators, spelled as in the document model.
#pragma once

#include <Ozmira/ozmElement.h>

#include <string_view>

namespace ozm::tool {

std::string_view NameOf(Element::Type type);
std::string_view NameOf(PathCommand::Type type);
std::string_view NameOf(StyleProperty::Type type);
std::string_view NameOf(Dimension::Unit unit);
std::string_view NameOf(Gradient::Type type);
std::string_view NameOf(Gradient::Units units);
std::string_view NameOf(Gradient::SpreadMethod method);

/// The name of the keyword of a property whose payload is a keyword.
std::string_view NameOfKeyword(const StyleProperty& property);

} // namespace ozm::tool
