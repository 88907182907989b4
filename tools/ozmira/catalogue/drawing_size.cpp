#include "catalogue/drawing_size.h"

#include "base/text.h"

#include <rapidxml/rapidxml.hpp>

#include <cmath>
#include <map>

namespace ozm::tool {
namespace {

/// A number of points or units, to a thousandth.
std::string Thousandths(double number) { return FormatNumber(std::round(number * 1000) / 1000); }

/// A part of a text and what replaces it.
struct Edit {
    size_t length = 0;
    std::string replacement;
};

} // namespace

std::string WithSize(std::string_view text, const Document& document, double width, double height) {
    const Rectf& box = document.viewBox;
    std::string viewBox;
    for (const double number : {box.origin.x, box.origin.y, box.size.x, box.size.y})
        viewBox += (viewBox.empty() ? "" : " ") + FormatNumber(number);
    const std::pair<const char*, std::string> attributes[] = {
        {"width", Thousandths(width)}, {"height", Thousandths(height)}, {"viewBox", viewBox}};

    std::string copy(text);
    rapidxml::xml_document<char> xml;
    // The flags that the parser uses; with them, RapidXML does not modify the text.
    xml.parse<rapidxml::parse_fastest>(copy.data());
    const auto* const svg = xml.first_node();
    std::map<const char*, Edit> edits; // by place
    std::string missing;
    for (const auto& [name, value] : attributes) {
        if (const auto* const attribute = svg->first_attribute(name)) {
            edits[attribute->value()] = {attribute->value_size(), value};
        } else {
            missing += ' ' + std::string(name) + "=\"" + value + '"';
        }
    }
    edits[svg->name() + svg->name_size()].replacement = missing;

    std::string result;
    const char* at = copy.c_str();
    for (const auto& [place, edit] : edits) {
        result.append(at, place);
        result += edit.replacement;
        at = place + edit.length;
    }
    return result.append(at, copy.c_str() + copy.size());
}

} // namespace ozm::tool
