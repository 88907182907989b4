#pragma once

#include <Ozmira/ozmElement.h>

#include <string>

namespace ozm::test {

// Documents and their parts as compact text, for comparing. Each number is the shortest text that reads back
// as the same number.

/// For example "M1,2 L3,4;5,6 C0,0,1,1,2,2 Z". A curve lists its control points, then its end.
std::string Text(const Path& path);

/// For example "FillColor=1,0,0,1 ClipPathURL=#a". Keywords are written as numbers.
std::string Text(const Style& style);

std::string Text(const Gradient& gradient);

/// Type, payload, every other field that differs from its default, and the properties of the style in braces.
std::string Text(const Document& document, const Element& element);

/// View box, size and definitions on the first line, then a line for each element.
std::string Text(const Document& document);

/// Parses `markup` as the content of an `svg` element and returns a line for each element after the root.
std::string ElementsText(const std::string& markup);

} // namespace ozm::test
