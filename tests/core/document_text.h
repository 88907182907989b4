#pragma once

#include <Ozmira/ozmDocument.h>

#include <string>

namespace ozm::test {

// Compact text of parts of a document, for comparing. Numbers are written as short as they round-trip.

/// For example "M1,2 L3,4;5,6 C0,0,1,1,2,2 Z"; a curve is control1, control2, end.
std::string Text(const Path& path);

/// For example "FillColor=1,0,0,1 ClipPathURL=#a"; keywords are numbers.
std::string Text(const Style& style);

std::string Text(const Gradient& gradient);

/// The kind, its payload and what differs from the defaults, the properties of its style in braces.
std::string Text(const Document& document, const Element& element);

/// View box, size and definitions on the first line, then one line for each element.
std::string Text(const Document& document);

/// Parses `markup` as the children of an `svg` element and writes a line for each element behind the root.
std::string ElementsText(const std::string& markup);

} // namespace ozm::test
