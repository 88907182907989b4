#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/list_number_reader.h"
#include "path_data/command_letters.h"
#include "path_data/path_data_reader.h"

#include <algorithm>
#include <string_view>

namespace ozm {
namespace {

/// A lower bound for the number of characters that follow an attribute value of an element inside the root
/// element.
constexpr size_t kMinMarkupAfterValue = std::string_view("\"/></>").size();
static_assert(kMinMarkupAfterValue >= kMaxPathDataOverrun, "some scanner would never be chosen");

} // namespace

bool SVGParser::PathCommandIsRelative(char letter) const {
    return relativeCommands.find(letter) != std::string_view::npos;
}

void SVGParser::ParsePathData(StringView text, Path& path) {
    ReadPathData(text, path.commands, ChoosePathDataScanner(PathDataScanners(), text.length, 0));
}

std::vector<double> SVGParser::ParsePathCommandArguments(StringView text) {
    const auto skipSeparators = [](const char* at, const char* end) {
        return std::find_if_not(
            at, end, [](char c) { return c == ' ' || c == ',' || c == '\t' || c == '\n' || c == '\r'; });
    };
    constexpr uint64_t kMaxReserve = 64;
    std::vector<double> numbers;
    numbers.reserve(static_cast<size_t>(std::min(text.length / 2 + 1, kMaxReserve)));
    const char* at = text.begin();
    double number;
    while ((at = ReadListNumber(at, text.end(), number, skipSeparators))) numbers.push_back(number);
    return numbers;
}

int64_t SVGParser::ProcessPathNode(const XMLNode& node) {
    StringView data;
    if (!node.FindAttribute("d", data)) return -1;
    const uint64_t index = AddElement(Element::Type::Path);
    const size_t readableAfter = m_isParsing ? kMinMarkupAfterValue : 0;
    ReadPathData(data, document->elements[index].path.commands,
                 ChoosePathDataScanner(PathDataScanners(), data.length, readableAfter));
    ProcessCommonAttributes(index, node);
    return static_cast<int64_t>(index);
}

} // namespace ozm
