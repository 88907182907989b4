#include "files/drawing_file.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "files/input_file.h"

#include <Ozmira/SVG/ozmSVGParser.h>
#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

namespace ozm::tool {
namespace {

/// "line 3, column 14" for an offset in bytes; both count from 1, columns in characters.
std::string DescribePlace(std::string_view text, size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    const auto column = std::count_if(before.begin() + static_cast<ptrdiff_t>(lineStart), before.end(),
                                      [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }) +
                        1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

bool IsUTF16(std::string_view text) { return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"); }

std::string DescribeTopElement(const rapidxml::xml_document<char>& xml) {
    const auto* const top = xml.first_node();
    if (!top) return "holds no XML element; a drawing has an svg element at the top";
    const std::string name = OnOneLine({top->name(), top->name_size()});
    return "has no svg element at the top but \"" + name + "\"" +
           (name.ends_with(":svg") ? "; write it without the prefix" : "; is it the right file?");
}

} // namespace

Drawing ParseDrawing(std::string text) try {
    Drawing drawing;
    drawing.text = std::move(text);
    const auto tags = std::count(drawing.text.begin(), drawing.text.end(), '<');
    if (tags > static_cast<ptrdiff_t>(kMaximumTags)) {
        throw FileError("has more than " + FormatCount(kMaximumTags) +
                        " tags, the most that are read; split the drawing");
    }
    drawing.document = SVGParser().CreateDocumentWithSVGData(drawing.text.c_str());
    return drawing;
} catch (const std::bad_alloc&) {
    throw FileError("needs more memory to be read than there is; split the drawing");
}

Drawing ReadDrawing(const std::string& path) try {
    return ParseDrawing(ReadInput(path));
} catch (const std::bad_alloc&) {
    throw FileError("needs more memory to be read than there is; split the drawing");
}

std::string WhyNothingToDraw(const std::string& text) {
    // The parser stops at the first NUL.
    const std::string_view read = text.c_str();
    if (text.empty()) return "empty; is it the right file?";
    if (IsUTF16(text)) return "UTF-16 text; convert it to UTF-8 first, for example with iconv";
    if (read.empty()) return "not XML: it begins with a NUL byte; is it the right file?";
    if (NestsDeeperThan(text.c_str())) {
        return "nests elements deeper than " + FormatCount(kMaximumNestingDepth) +
               " levels; take out groups that hold one group only";
    }
    std::string copy(read);
    rapidxml::xml_document<char> xml;
    try {
        // The flags that the parser uses; with them, RapidXML does not modify the text.
        xml.parse<rapidxml::parse_fastest>(copy.data());
        return DescribeTopElement(xml);
    } catch (const rapidxml::parse_error& error) {
        const auto offset = static_cast<size_t>(error.where<char>() - copy.data());
        return "not well-formed XML: " + std::string(error.what()) + " at " + DescribePlace(read, offset) +
               "; correct it there";
    }
}

namespace {

Drawing WithElements(Drawing drawing) {
    if (drawing.document->elements.empty()) throw FileError(WhyNothingToDraw(drawing.text));
    return drawing;
}

} // namespace

Drawing ParseDrawingWithElements(std::string text) { return WithElements(ParseDrawing(std::move(text))); }

Drawing ReadDrawingWithElements(const std::string& path) { return WithElements(ReadDrawing(path)); }

} // namespace ozm::tool
