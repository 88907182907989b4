#pragma once

#include <Ozmira/ozmDocument.h>
#include <Ozmira/ozmLog.h>
#include <Ozmira/ozmStringUtils.h>
#include <Ozmira/SVG/ozmXMLNode.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ozm {

class ElementAttributes;

/// Reads SVG text into a `Document`. Lenient and silent: what it does not understand it drops, keeping what
/// it read before the fault; it throws nothing but `std::bad_alloc`. A parser may run several parses one
/// after another, and separate parsers may run on separate threads.
///
/// Each value syntax and each element has an operation of its own that can be called alone. Operations that
/// add to the document (`AddElement`, `AddDefinitions`, `Process…`) need `document` set.
class SVGParser {
public:
    enum class UnitAttributeFormat { CaseSensitive = 0, CaseInsensitive = 1 };

    void* reserved = nullptr; ///< Always null.
    Log* log = nullptr;       ///< Borrowed; may be null. Nothing is written to it.
    /// Borrowed; the document under construction while a parse runs, else null.
    Document* document = nullptr;
    uint32_t nodeCount = 0; ///< Elements given to `ProcessNode` since the parse began.

    // Whole documents

    void SetLog(Log* newLog) { log = newLog; }

    /// Parses NUL-terminated text, which is read and not changed and need not outlive the call. Malformed
    /// XML, text without an `svg` element and a null pointer give a document without elements; the result is
    /// never null.
    std::unique_ptr<Document> CreateDocumentWithSVGData(const char* data);
    /// Parses a file. Null when it can't be opened or measured, or does not fit into memory; an empty
    /// document when it can't be read.
    std::unique_ptr<Document> CreateDocumentWithContentsOfSVGFile(const char* path);
    /// As above, reading the file in one piece with unbuffered system calls.
    std::unique_ptr<Document> CreateDocumentWithContentsOfSVGFile_unbufferedSysOpen(const char* path);
    /// As `CreateDocumentWithSVGData`.
    std::unique_ptr<Document> ParseSVGData(char* text);

    // Tree walk. Every handler returns the index of the element that it made, or -1 (all bits set) for none.

    /// Reads the root element: size, view box, children, ids.
    void ProcessSVGNode(const XMLNode& node);
    /// Hands the node to the handler for its name; -1 for names without one.
    uint64_t ProcessNode(const XMLNode& node);
    /// Appends an empty element to the document, which may move the elements before it.
    uint64_t AddElement(Element::Type type);
    /// Collects the ids of an element and everything under it into the document's definitions.
    void AddDefinitions(size_t elementIndex);

    // Elements

    uint64_t ProcessGroupNode(const XMLNode& node);
    uint64_t ProcessLinkNode(const XMLNode& node);
    uint64_t ProcessDefsNode(const XMLNode& node);
    uint64_t ProcessClipPathNode(const XMLNode& node);
    uint64_t ProcessUseNode(const XMLNode& node);
    uint64_t ProcessSymbolNode(const XMLNode& node);   ///< Always -1: symbols are dropped.
    uint64_t ProcessMetadataNode(const XMLNode& node); ///< Always -1.
    uint64_t ProcessTextNode(const XMLNode& node);     ///< Always -1.
    uint64_t ProcessRectNode(const XMLNode& node);
    uint64_t ProcessCircleNode(const XMLNode& node);
    uint64_t ProcessEllipseNode(const XMLNode& node);
    uint64_t ProcessLineNode(const XMLNode& node);
    uint64_t ProcessPolyLineNode(const XMLNode& node);
    uint64_t ProcessPolygonNode(const XMLNode& node);
    int64_t ProcessPathNode(const XMLNode& node);
    size_t ProcessLinearGradientNode(const XMLNode& node);
    size_t ProcessRadialGradientNode(const XMLNode& node);
    /// Appends one stop.
    void ProcessStopNode(const XMLNode& node, Gradient& gradient);

    // Attributes that many elements share

    void ProcessIDAttribute(Element& element, const XMLNode& node);
    /// Sets the identity where there is no attribute.
    void ProcessTransformAttribute(Element& element, const XMLNode& node);
    /// Reads the presentation attributes, then the `style` attribute, into a style of the document.
    void ProcessStyleAttributes(Element& element, const XMLNode& node);
    /// Appends at most one property to `style` (more for a name that begins with "style", whose value is a
    /// declaration list), or changes `element.hidden`.
    void ProcessStyleProperty(StringView name, StringView value, Element& element, Style& style);
    /// Reads the first declaration of a list: its trimmed name and value, and the front of `text` that it
    /// takes up. False when there is none; the outputs are then unchanged.
    bool ParseCSSStylePropertyDeclaration(StringView text, std::pair<StringView, StringView>& declaration,
                                          StringView& consumed);
    /// Applies every declaration up to the first malformed one. Always true.
    bool ProcessCSSStylePropertyDeclarations(StringView text, Element& element, Style& style);

    // Values

    /// Reads a number without exponent and the unit after it. False without a number, which leaves `out`
    /// unchanged; an unknown unit reads as `PX`, and only `CaseSensitive` knows "%".
    bool ParseDimension(StringView text, Dimension& out, UnitAttributeFormat format);
    /// Reads four numbers separated by whitespace; {0, 0, 128, 128} when one is missing or malformed.
    void ParseViewBox(StringView text, Rectf& out);
    /// Reads a transform list; the rightmost item acts first. False when the text does not end right after an
    /// item; `out` then holds the items before the fault.
    bool ParseTransform(StringView text, Transform& out);
    /// Appends the commands of path data, as far as they can be read. Arcs and quadratic curves yield
    /// nothing.
    void ParsePathData(StringView text, Path& path);
    /// Reads a list of numbers separated by blanks and commas, up to the first thing that is none.
    std::vector<double> ParsePathCommandArguments(StringView text);
    /// True for the letters of relative path commands.
    bool PathCommandIsRelative(char letter) const;
    /// Reads a hexadecimal, functional or named colour or "none". False leaves `color` as it was.
    bool ParseCSSColor(StringView text, Color& color);
    /// Reads "rgb(r, g, b)" with numbers of 0 to 255; `consumed` gets the text through the ")".
    bool ParseCSSColorInRGBIntegerFunctionalForm(StringView text, Color& color, StringView& consumed);
    /// Reads "rgb(r%, g%, b%)"; `consumed` gets the text through the ")".
    bool ParseCSSColorInRGBFloatingFunctionalForm(StringView text, Color& color, StringView& consumed);
    /// Looks up one of the 147 colour keywords of CSS Color Module Level 3, in lower case.
    bool ParseCSSColorNamedColor(StringView text, Color& color);
    /// Reads "url(#id)". False leaves `id` as it was.
    bool ParseFunctionalLocalIRI(StringView text, std::string& id);

private:
    uint64_t ProcessContainerNode(const XMLNode& node, Element::Type type);
    uint64_t ProcessGradientNode(const XMLNode& node, Gradient::Type type);
    void ProcessCommonAttributes(uint64_t index, const XMLNode& node);
    void ProcessStyleAttributes(Element& element, const ElementAttributes& attributes);
    std::vector<uint64_t> ProcessChildren(const XMLNode& node);

    bool m_isParsing = false; ///< All nodes come from a parsed text, so markup follows each value.
};

} // namespace ozm
