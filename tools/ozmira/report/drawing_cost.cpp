// Depth-first search with memorised results over the graph that drawing walks. It keeps its own stack,
// because chains of references can be as long as the file.
#include "report/drawing_cost.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"
#include "report/definitions.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace ozm::tool {
namespace {

/// The ways in which an element is reached, each of which leads on to different elements.
enum class Role : uint8_t {
    Drawn,         ///< Painted with all that is under it.
    ClipContainer, ///< A clip path whose children are added to a clip.
    Clipped,       ///< Added to a clip.
};
constexpr size_t kRoles = 3;

struct Node {
    uint64_t element;
    Role role;
};

struct Record {
    enum class State : uint8_t { Unseen, Open, Done };

    DrawingCost cost;
    State state = State::Unseen;
};

/// A node whose successors are being visited.
struct Frame {
    Node node;
    size_t nextProperty = 0;
    size_t nextChild = 0;
};

uint32_t AddUpTo(uint32_t a, uint64_t b, uint32_t limit) {
    // One more than the limit says that it is exceeded.
    return static_cast<uint32_t>(std::min<uint64_t>(a + b, uint64_t{limit} + 1));
}

void Add(DrawingCost& total, const DrawingCost& part) {
    total.elements = AddUpTo(total.elements, part.elements, kMaximumDrawnElements);
    total.segments = AddUpTo(total.segments, part.segments, kMaximumDrawnSegments);
    total.depth = std::max(total.depth, part.depth);
}

uint64_t CountSegments(const Element& element) {
    constexpr uint64_t kCorners = 4;
    if (element.type == Element::Type::Rect || element.type == Element::Type::Ellipse) return kCorners;
    if (element.type != Element::Type::Path) return 0;
    uint64_t count = 0;
    for (const PathCommand& command : element.path.commands) {
        switch (command.type) {
        case PathCommand::Type::LineTo: count += command.points.size(); break;
        case PathCommand::Type::CurveTo: count += command.curves.size(); break;
        default: ++count; break;
        }
    }
    return count;
}

class DrawingMeasure {
public:
    explicit DrawingMeasure(const Document& document)
        : m_document(document), m_definitions(document), m_records(document.elements.size() * kRoles) {}

    DrawingCost Run() {
        if (m_document.elements.empty()) return {};
        const Node root{0, Role::Drawn};
        Open(root);
        while (!m_frames.empty()) {
            if (const std::optional<Node> next = NextSuccessor(m_frames.back())) {
                Visit(*next);
            } else {
                Close();
            }
        }
        return RecordOf(root).cost;
    }

private:
    Record& RecordOf(Node node) { return m_records[node.element * kRoles + static_cast<size_t>(node.role)]; }
    const Element& ElementOf(Node node) const { return m_document.elements[node.element]; }

    void Open(Node node) {
        Record& record = RecordOf(node);
        record.state = Record::State::Open;
        if (node.role != Role::ClipContainer) {
            // What is hidden, or no shape, still has to be looked at each time.
            record.cost.elements = 1;
            const bool skipped = node.role == Role::Drawn && ElementOf(node).hidden;
            const uint64_t segments = skipped ? 0 : CountSegments(ElementOf(node));
            record.cost.segments = AddUpTo(0, segments, kMaximumDrawnSegments);
        }
        m_frames.push_back({node});
    }

    void Visit(Node next) {
        const Record& record = RecordOf(next);
        switch (record.state) {
        case Record::State::Unseen: Open(next); break;
        case Record::State::Open: ThrowCycle(next);
        case Record::State::Done: Add(RecordOf(m_frames.back().node).cost, record.cost); break;
        }
    }

    void Close() {
        const Node node = m_frames.back().node;
        Record& record = RecordOf(node);
        record.state = Record::State::Done;
        // Adding a clip path's children is a loop in the step that applies the clip, not a step of its own.
        if (node.role != Role::ClipContainer) ++record.cost.depth;
        m_frames.pop_back();
        if (!m_frames.empty()) Add(RecordOf(m_frames.back().node).cost, record.cost);
    }

    [[noreturn]] void ThrowCycle(Node node) const {
        // A cycle holds at least one reference; the first element on the way round that has an id says where.
        std::string where;
        for (auto frame = m_frames.rbegin(); where.empty(); ++frame) {
            where = ElementOf(frame->node).id;
            if (frame->node.element == node.element && frame->node.role == node.role) break;
        }
        throw FileError("its references form a cycle" +
                        (where.empty() ? std::string() : " through \"#" + OnOneLine(where) + "\"") +
                        "; take out the use or clip-path that leads back");
    }

    /// The next node that drawing reaches from this one, in the order of drawing.
    std::optional<Node> NextSuccessor(Frame& frame) const {
        const Element& element = ElementOf(frame.node);
        switch (frame.node.role) {
        case Role::Drawn: {
            if (element.hidden) return std::nullopt;
            if (const auto clip = NextClip(frame, element)) return clip;
            if (IsTransparent(element)) return std::nullopt;
            if (element.type == Element::Type::Group) return NextChild(frame, element, Role::Drawn);
            return NextReferenced(frame, element, Role::Drawn);
        }
        case Role::ClipContainer: return NextChild(frame, element, Role::Clipped);
        case Role::Clipped: return NextReferenced(frame, element, Role::Clipped);
        }
        return std::nullopt;
    }

    const std::vector<StyleProperty>& PropertiesOf(const Element& element) const {
        static const std::vector<StyleProperty> kNone;
        return element.styleIndex < 0 ? kNone
                                      : m_document.styles[static_cast<size_t>(element.styleIndex)].properties;
    }

    std::optional<Node> NextClip(Frame& frame, const Element& element) const {
        const auto& properties = PropertiesOf(element);
        while (frame.nextProperty < properties.size()) {
            const StyleProperty& property = properties[frame.nextProperty++];
            if (property.type != StyleProperty::Type::ClipPathURL) continue;
            const auto target = m_definitions.Find(property.url);
            if (target && m_document.elements[*target].type == Element::Type::ClipPath) {
                return Node{*target, Role::ClipContainer};
            }
        }
        return std::nullopt;
    }

    /// True when the element's own opacity keeps everything under it from being drawn.
    bool IsTransparent(const Element& element) const {
        double opacity = 1;
        for (const StyleProperty& property : PropertiesOf(element)) {
            if (property.type == StyleProperty::Type::Opacity) opacity *= property.number;
        }
        return !(opacity > 0);
    }

    std::optional<Node> NextChild(Frame& frame, const Element& element, Role role) const {
        if (frame.nextChild == element.children.size()) return std::nullopt;
        return Node{element.children[frame.nextChild++], role};
    }

    std::optional<Node> NextReferenced(Frame& frame, const Element& element, Role role) const {
        if (element.type != Element::Type::Use || frame.nextChild++ > 0) return std::nullopt;
        const auto target = m_definitions.Find(element.href);
        if (!target) return std::nullopt;
        const bool isClipPath = m_document.elements[*target].type == Element::Type::ClipPath;
        return Node{*target, role == Role::Clipped && isClipPath ? Role::ClipContainer : role};
    }

    const Document& m_document;
    Definitions m_definitions;
    std::vector<Record> m_records;
    std::vector<Frame> m_frames;
};

} // namespace

DrawingCost MeasureDrawing(const Document& document) { return DrawingMeasure(document).Run(); }

DrawingCost CheckDrawing(const Document& document) {
    const DrawingCost cost = MeasureDrawing(document);
    if (cost.elements > kMaximumDrawnElements) {
        throw FileError("draws more than " + FormatCount(kMaximumDrawnElements) +
                        " elements once its references are followed; use fewer levels of use elements");
    }
    if (cost.segments > kMaximumDrawnSegments) {
        throw FileError("draws more than " + FormatCount(kMaximumDrawnSegments) +
                        " path segments once its references are followed; use fewer levels of use elements");
    }
    if (cost.depth > kMaximumDrawingDepth) {
        throw FileError("draws elements inside elements deeper than " + FormatCount(kMaximumDrawingDepth) +
                        " levels once its references are followed; shorten the chain of use elements");
    }
    return cost;
}

} // namespace ozm::tool
