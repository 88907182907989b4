// The names of enumerators, as the document model spells them.
#pragma once

#include <Ozmira/ozmDocument.h>

#include <string_view>

namespace ozm::tool {

std::string_view NameOf(Element::Type type);
std::string_view NameOf(PathCommand::Type type);
std::string_view NameOf(StyleProperty::Type type);
std::string_view NameOf(Dimension::Unit unit);
std::string_view NameOf(Gradient::Type type);
std::string_view NameOf(Gradient::Units units);
std::string_view NameOf(Gradient::SpreadMethod method);

/// The name of the keyword that a property of a `keyword` type carries.
std::string_view NameOfKeyword(const StyleProperty& property);

} // namespace ozm::tool
