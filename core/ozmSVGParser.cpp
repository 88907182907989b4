#include <Ozmira/ozmLimits.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include "svg/element_attributes.h"

#include <algorithm>
#include <string_view>

namespace ozm {
namespace {

/// With these flags, the XML reader creates no data nodes, translates no entities and writes no string
/// terminators, so that it leaves the text unchanged.
constexpr int kXMLFlags = rapidxml::parse_fastest;
static_assert(kXMLFlags == 13);

using XMLDocument = rapidxml::xml_document<char>;

/// Returns false for malformed text.
bool ParseXML(XMLDocument& xml, char* text) {
    if (NestsDeeperThan(text)) return false;
    try {
        xml.parse<kXMLFlags>(text);
    } catch (const rapidxml::parse_error&) {
        return false;
    }
    return true;
}

XMLNode FindRoot(const XMLDocument& xml) {
    XMLNode node(xml.first_node());
    while (node && node.Name() != "svg") node = node.NextSibling();
    return node;
}

/// The elements that have a handler.
enum class ElementName {
    Path,
    G,
    Defs,
    Symbol,
    ClipPath,
    A,
    Use,
    Rect,
    Circle,
    Ellipse,
    Line,
    PolyLine,
    Polygon,
    RadialGradient,
    LinearGradient,
    Unknown, ///< Any other name, or no name.
};

/// Kept out of `ProcessNode`, which recurses and should use little stack.
ElementName FindElementName(std::string_view name) {
    switch (name.size()) {
    case 1:
        if (name == "g") return ElementName::G;
        if (name == "a") return ElementName::A;
        break;
    case 3:
        if (name == "use") return ElementName::Use;
        break;
    case 4:
        if (name == "path") return ElementName::Path;
        if (name == "rect") return ElementName::Rect;
        if (name == "line") return ElementName::Line;
        if (name == "defs") return ElementName::Defs;
        break;
    case 6:
        if (name == "circle") return ElementName::Circle;
        if (name == "symbol") return ElementName::Symbol;
        break;
    case 7:
        if (name == "polygon") return ElementName::Polygon;
        if (name == "ellipse") return ElementName::Ellipse;
        break;
    case 8:
        if (name == "polyline") return ElementName::PolyLine;
        if (name == "clipPath") return ElementName::ClipPath;
        break;
    case 14:
        if (name == "linearGradient") return ElementName::LinearGradient;
        if (name == "radialGradient") return ElementName::RadialGradient;
        break;
    default: break;
    }
    return ElementName::Unknown;
}

/// Reserves memory for those children of a node that become elements. Elements are large, and a list that
/// only grows by doubling takes up to three times their memory while it is copied.
void ReserveForChildren(std::vector<Element>& elements, const XMLNode& node) {
    size_t count = 0;
    for (XMLNode child = node.FirstChild(); child; child = child.NextSibling()) {
        count += FindElementName(child.Name()) != ElementName::Unknown;
    }
    const size_t needed = elements.size() + count;
    if (needed > elements.capacity()) elements.reserve(std::max(needed, 2 * elements.size()));
}

/// Sets a parser's state for the duration of a parse.
class ParseScope {
public:
    ParseScope(SVGParser& parser, Document* document, bool& isParsing)
        : m_parser(parser), m_isParsing(isParsing) {
        m_parser.document = document;
        m_isParsing = true;
    }
    ~ParseScope() {
        m_parser.document = nullptr;
        m_isParsing = false;
    }
    ParseScope(const ParseScope&) = delete;
    ParseScope& operator=(const ParseScope&) = delete;

private:
    SVGParser& m_parser;
    bool& m_isParsing;
};

} // namespace

std::unique_ptr<Document> SVGParser::CreateDocumentWithSVGData(const char* data) {
    // With these flags the XML reader does not write to the text.
    return ParseSVGData(const_cast<char*>(data));
}

std::unique_ptr<Document> SVGParser::ParseSVGData(char* text) {
    nodeCount = 0;
    auto result = std::make_unique<Document>();
    const ParseScope scope(*this, result.get(), m_isParsing);
    XMLDocument xml;
    if (text && ParseXML(xml, text)) {
        if (const XMLNode root = FindRoot(xml)) ProcessSVGNode(root);
    }
    return result;
}

void SVGParser::ProcessSVGNode(const XMLNode& node) {
    DimensionSize& size = document->size;
    size = {{Dimension::Unit::PX, 0}, {Dimension::Unit::PX, 0}};
    StringView width, height, viewBox;
    const bool hasWidth = node.FindAttribute("width", width);
    const bool hasSize = node.FindAttribute("height", height) && hasWidth;
    if (hasSize) {
        ParseDimension(width, size.width, UnitAttributeFormat::CaseSensitive);
        ParseDimension(height, size.height, UnitAttributeFormat::CaseSensitive);
    }
    if (node.FindAttribute("viewBox", viewBox)) {
        ParseViewBox(viewBox, document->viewBox);
        if (!hasSize) {
            size.width = {Dimension::Unit::PT, document->viewBox.size.x};
            size.height = {Dimension::Unit::PT, document->viewBox.size.y};
        }
    } else {
        document->viewBox = {{0, 0}, {size.width.value, size.height.value}};
    }

    constexpr size_t kInitialCapacity = 10; // enough for most icons: saves 3 % of parsing
    document->elements.reserve(kInitialCapacity);
    document->styles.reserve(kInitialCapacity);
    const uint64_t root = AddElement(Element::Type::Group);
    std::vector<uint64_t> children = ProcessChildren(node);
    document->elements[root].children = std::move(children);
    AddDefinitions(root);
}

std::vector<uint64_t> SVGParser::ProcessChildren(const XMLNode& node) {
    std::vector<uint64_t> children;
    size_t count = 0;
    for (XMLNode child = node.FirstChild(); child; child = child.NextSibling()) ++count;
    children.reserve(count);
    if (count > document->elements.capacity() - document->elements.size()) {
        ReserveForChildren(document->elements, node);
    }
    for (XMLNode child = node.FirstChild(); child; child = child.NextSibling()) {
        const uint64_t index = ProcessNode(child);
        if (index != kNoElement) children.push_back(index);
    }
    return children;
}

uint64_t SVGParser::ProcessNode(const XMLNode& node) {
    uint64_t index = kNoElement;
    switch (FindElementName(node.Name())) {
    case ElementName::Path: index = static_cast<uint64_t>(ProcessPathNode(node)); break;
    case ElementName::G: index = ProcessGroupNode(node); break;
    case ElementName::Defs: index = ProcessDefsNode(node); break;
    case ElementName::Symbol: index = ProcessSymbolNode(node); break;
    case ElementName::ClipPath: index = ProcessClipPathNode(node); break;
    case ElementName::A: index = ProcessLinkNode(node); break;
    case ElementName::Use: index = ProcessUseNode(node); break;
    case ElementName::Rect: index = ProcessRectNode(node); break;
    case ElementName::Circle: index = ProcessCircleNode(node); break;
    case ElementName::Ellipse: index = ProcessEllipseNode(node); break;
    case ElementName::Line: index = ProcessLineNode(node); break;
    case ElementName::PolyLine: index = ProcessPolyLineNode(node); break;
    case ElementName::Polygon: index = ProcessPolygonNode(node); break;
    case ElementName::RadialGradient: index = ProcessRadialGradientNode(node); break;
    case ElementName::LinearGradient: index = ProcessLinearGradientNode(node); break;
    case ElementName::Unknown: break;
    }
    ++nodeCount;
    return index;
}

uint64_t SVGParser::AddElement(Element::Type type) {
    document->elements.emplace_back(type);
    return document->elements.size() - 1;
}

void SVGParser::ProcessIDAttribute(Element& element, const XMLNode& node) {
    StringView id;
    if (node.FindAttribute("id", id)) element.id.assign(id.data, id.length);
}

void SVGParser::ProcessTransformAttribute(Element& element, const XMLNode& node) {
    element.transform = TransformIdentity;
    StringView transform;
    if (node.FindAttribute("transform", transform)) ParseTransform(transform, element.transform);
}

void SVGParser::ProcessCommonAttributes(uint64_t index, const XMLNode& node) {
    Element& element = document->elements[index];
    const ElementAttributes attributes(node);
    if (const auto id = attributes.ID()) element.id.assign(id->data, id->length);
    ProcessStyleAttributes(element, attributes);
    if (const auto transform = attributes.Transform()) ParseTransform(*transform, element.transform);
}

} // namespace ozm
