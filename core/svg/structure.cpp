#include <Ozmira/SVG/ozmSVGParser.h>

namespace ozm {

uint64_t SVGParser::ProcessContainerNode(const XMLNode& node, Element::Type type) {
    const uint64_t index = AddElement(type);
    std::vector<uint64_t> children = ProcessChildren(node);
    document->elements[index].children = std::move(children);
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessGroupNode(const XMLNode& node) {
    return ProcessContainerNode(node, Element::Type::Group);
}

uint64_t SVGParser::ProcessLinkNode(const XMLNode& node) { return ProcessGroupNode(node); }

uint64_t SVGParser::ProcessDefsNode(const XMLNode& node) {
    return ProcessContainerNode(node, Element::Type::Defs);
}

uint64_t SVGParser::ProcessClipPathNode(const XMLNode& node) {
    return ProcessContainerNode(node, Element::Type::ClipPath);
}

uint64_t SVGParser::ProcessSymbolNode(const XMLNode&) { return kNoElement; }

uint64_t SVGParser::ProcessMetadataNode(const XMLNode&) { return kNoElement; }

uint64_t SVGParser::ProcessTextNode(const XMLNode&) { return kNoElement; }

uint64_t SVGParser::ProcessUseNode(const XMLNode& node) {
    const uint64_t index = AddElement(Element::Type::Use);
    Element& element = document->elements[index];
    StringView value;
    if (node.FindAttribute("xlink:href", value) && value.HasPrefix("#")) {
        element.href.assign(value.data + 1, value.length - 1);
    }
    if (node.FindAttribute("x", value)) element.position.x = value.toDouble();
    if (node.FindAttribute("y", value)) element.position.y = value.toDouble();
    ProcessCommonAttributes(index, node);
    return index;
}

void SVGParser::AddDefinitions(size_t elementIndex) {
    const Element& element = document->elements[elementIndex];
    if (!element.id.empty()) document->definitions.push_back({element.id, elementIndex});
    if (!IsContainer(element.type)) return;
    for (const uint64_t child : element.children) AddDefinitions(child);
}

} // namespace ozm
