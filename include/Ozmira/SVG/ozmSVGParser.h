#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraExport.h>
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

/// Reads SVG text into a `Document`. The parser is lenient and silent: it drops what it does not understand
/// and keeps what it read before an error. It throws only `std::bad_alloc`. A parser can be used for several
/// parses, one after another; different parsers can run on different threads.
///
/// Each value syntax and each element has a function of its own, which can be called by itself. Functions
/// that add to the document (`AddElement`, `AddDefinitions`, `Process…`) require `document` to be set.
class OZM_CXX_EXPORT SVGParser {
public:
    /// Whether the case of unit names matters. Attributes of SVG are `CaseSensitive`.
    enum class UnitAttributeFormat { CaseSensitive = 0, CaseInsensitive = 1 };

    void* reserved = nullptr; ///< Always null.
    Log* log = nullptr;       ///< Borrowed; may be null. The parser writes nothing to it.
    /// Borrowed. The document under construction during a parse, otherwise null.
    Document* document = nullptr;
    uint32_t nodeCount = 0; ///< Number of calls of `ProcessNode` since the parse began.

    // Whole documents

    /// Sets `log`.
    void SetLog(Log* newLog) { log = newLog; }

    /// Parses NUL-terminated text, which is not changed and need not outlive the call. Never returns null:
    /// malformed XML, text without an `svg` element and a null pointer yield a document without elements.
    std::unique_ptr<Document> CreateDocumentWithSVGData(const char* data);
    /// Parses a file. Returns null if it cannot be opened, its size cannot be determined, or it does not fit
    /// into memory; returns a document without elements if it cannot be read.
    std::unique_ptr<Document> CreateDocumentWithContentsOfSVGFile(const char* path);
    /// As above. Reads the whole file with a single system call.
    std::unique_ptr<Document> CreateDocumentWithContentsOfSVGFile_unbufferedSysOpen(const char* path);
    /// As `CreateDocumentWithSVGData`.
    std::unique_ptr<Document> ParseSVGData(char* text);

    // The tree. Every handler returns the index of the element that it added, or -1 (all bits set) for none.

    /// Reads the root element: size, view box, children, ids.
    void ProcessSVGNode(const XMLNode& node);
    /// Calls the handler for the node's name. Returns -1 for names that have none.
    uint64_t ProcessNode(const XMLNode& node);
    /// Appends an empty element to the document and returns its index. Invalidates references to elements.
    uint64_t AddElement(Element::Type type);
    /// Adds the ids of an element and its descendants to the document's definitions.
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
    /// Appends a stop to `gradient`.
    void ProcessStopNode(const XMLNode& node, Gradient& gradient);

    // Attributes of many elements

    /// Leaves the id as it is if there is no attribute.
    void ProcessIDAttribute(Element& element, const XMLNode& node);
    /// Sets the identity if there is no attribute.
    void ProcessTransformAttribute(Element& element, const XMLNode& node);
    /// Reads the presentation attributes, then the `style` attribute, into a new style of the document. Adds
    /// no style if none of them sets a property.
    void ProcessStyleAttributes(Element& element, const XMLNode& node);
    /// Appends at most one property to `style`, or changes `element.hidden`. The value of a name that begins
    /// with "style" is a declaration list, which may append more.
    void ProcessStyleProperty(StringView name, StringView value, Element& element, Style& style);
    /// Reads the first declaration of a list: its trimmed name and value. `consumed` becomes the part of
    /// `text` that the declaration takes up, its semicolon included. Returns false, leaving the outputs
    /// unchanged, if there is no declaration.
    bool ParseCSSStylePropertyDeclaration(StringView text, std::pair<StringView, StringView>& declaration,
                                          StringView& consumed);
    /// Applies every declaration up to the first malformed one. Always returns true.
    bool ProcessCSSStylePropertyDeclarations(StringView text, Element& element, Style& style);

    // Values

    /// Reads a number without an exponent and the unit after it. An unknown unit is read as `PX`;
    /// `CaseInsensitive` does not know "%". Returns false, leaving `out` unchanged, if there is no number.
    bool ParseDimension(StringView text, Dimension& out, UnitAttributeFormat format);
    /// Reads four numbers separated by whitespace. Sets {0, 0, 128, 128} if one is missing or malformed.
    void ParseViewBox(StringView text, Rectf& out);
    /// Reads a list of transform functions, the rightmost of which applies first. Returns false if the text
    /// does not end right after a function; `out` is then composed of the functions before the error.
    bool ParseTransform(StringView text, Transform& out);
    /// Appends the commands of path data up to the first error. Arcs and quadratic curves are ignored.
    void ParsePathData(StringView text, Path& path);
    /// Reads a list of numbers separated by whitespace and commas, up to the first text that is neither.
    std::vector<double> ParsePathCommandArguments(StringView text);
    /// True for the letters of relative path commands.
    bool PathCommandIsRelative(char letter) const;
    /// Reads a hexadecimal, functional or named colour, or "none". Returns false, leaving `color` unchanged,
    /// if there is none.
    bool ParseCSSColor(StringView text, Color& color);
    /// Reads "rgb(r, g, b)", with numbers from 0 to 255. `consumed` becomes the text through the ")". Returns
    /// false, leaving the outputs unchanged, if the text has another form.
    bool ParseCSSColorInRGBIntegerFunctionalForm(StringView text, Color& color, StringView& consumed);
    /// As above, for "rgb(r%, g%, b%)".
    bool ParseCSSColorInRGBFloatingFunctionalForm(StringView text, Color& color, StringView& consumed);
    /// Looks up one of the 147 colour keywords of CSS Color Module Level 3, in lower case. Returns false,
    /// leaving `color` unchanged, for any other text.
    bool ParseCSSColorNamedColor(StringView text, Color& color);
    /// Reads "url(#id)". Returns false, leaving `id` unchanged, if the text has another form.
    bool ParseFunctionalLocalIRI(StringView text, std::string& id);

private:
    uint64_t ProcessContainerNode(const XMLNode& node, Element::Type type);
    uint64_t ProcessGradientNode(const XMLNode& node, Gradient::Type type);
    void ProcessCommonAttributes(uint64_t index, const XMLNode& node);
    void ProcessStyleAttributes(Element& element, const ElementAttributes& attributes);
    std::vector<uint64_t> ProcessChildren(const XMLNode& node);

    /// While true, nodes come from a complete text, so that markup follows every attribute value.
    bool m_isParsing = false;
};

} // namespace ozm
