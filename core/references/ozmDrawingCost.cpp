// A depth-first search of the graph that drawing follows. The cost of each node is computed once. The search
// keeps an explicit stack, because chains of references can be as long as the file.
#include <Ozmira/ozmDrawingCost.h>
#include <Ozmira/ozmReferences.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace ozm {
namespace {

/// The ways in which drawing uses an element. The elements reached from it depend on its role.
enum class Role : uint8_t {
    Drawn,         ///< Painted, with its descendants.
    ClipContainer, ///< A clip path whose children are added to a clip.
    Clipped,       ///< Added to a clip.
};
constexpr size_t kRoles = 3;

/// A node of the graph.
struct Node {
    uint64_t element;
    Role role;
};

/// The cost of a node and of everything reached from it.
struct Cost {
    uint32_t elements = 0;
    uint32_t segments = 0;
    uint32_t depth = 0;
};

/// What the search knows about a node.
struct NodeRecord {
    enum class State : uint8_t { Unseen, Open, Done };

    Cost cost;
    State state = State::Unseen;
};

/// A node whose successors are being visited.
struct Frame {
    Node node;
    size_t nextProperty = 0;
    size_t nextChild = 0;
};

uint32_t Saturate(uint64_t count) {
    return static_cast<uint32_t>(std::min<uint64_t>(count, std::numeric_limits<uint32_t>::max()));
}

void Add(Cost& total, const Cost& part) {
    total.elements = Saturate(uint64_t{total.elements} + part.elements);
    total.segments = Saturate(uint64_t{total.segments} + part.segments);
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

class DrawingCostSearch {
public:
    explicit DrawingCostSearch(const Document& document)
        : m_document(document), m_references(document), m_records(document.elements.size() * kRoles) {}

    DrawingCost Run() {
        if (m_document.elements.empty()) return {};
        const Node root{0, Role::Drawn};
        Open(root);
        while (!m_frames.empty()) {
            const std::optional<Node> next = NextSuccessor(m_frames.back());
            if (!next) {
                Close();
            } else if (RecordOf(*next).state == NodeRecord::State::Open) {
                return {.cycle = FindElementOfCycle(*next)};
            } else {
                Visit(*next);
            }
        }
        const Cost& cost = RecordOf(root).cost;
        return {cost.elements, cost.segments, cost.depth};
    }

private:
    NodeRecord& RecordOf(Node node) {
        return m_records[node.element * kRoles + static_cast<size_t>(node.role)];
    }
    const Element& ElementOf(Node node) const { return m_document.elements[node.element]; }

    void Open(Node node) {
        NodeRecord& record = RecordOf(node);
        record.state = NodeRecord::State::Open;
        if (node.role != Role::ClipContainer) {
            // Drawing takes time even for an element that is hidden or has no shape.
            record.cost.elements = 1;
            const bool skipped = node.role == Role::Drawn && ElementOf(node).hidden;
            const uint64_t segments = skipped ? 0 : CountSegments(ElementOf(node));
            record.cost.segments = Saturate(segments);
        }
        m_frames.push_back({node});
    }

    void Visit(Node next) {
        const NodeRecord& record = RecordOf(next);
        if (record.state == NodeRecord::State::Unseen) {
            Open(next);
        } else {
            Add(RecordOf(m_frames.back().node).cost, record.cost);
        }
    }

    void Close() {
        const Node node = m_frames.back().node;
        NodeRecord& record = RecordOf(node);
        record.state = NodeRecord::State::Done;
        // Drawing adds the children of a clip path in a loop, without recursion.
        if (node.role != Role::ClipContainer) ++record.cost.depth;
        m_frames.pop_back();
        if (!m_frames.empty()) Add(RecordOf(m_frames.back().node).cost, record.cost);
    }

    /// Chooses an element of the cycle that the innermost open node closes by its reference to `first`: the
    /// innermost one with an id, or else the element of `first`.
    uint64_t FindElementOfCycle(Node first) const {
        for (auto frame = m_frames.rbegin();; ++frame) {
            const Node node = frame->node;
            const bool isFirst = node.element == first.element && node.role == first.role;
            if (isFirst || !ElementOf(node).id.empty()) return node.element;
        }
    }

    /// Returns the next node reached from this one, in the order of drawing.
    std::optional<Node> NextSuccessor(Frame& frame) {
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

    bool IsClipPath(uint64_t index) const {
        return index != kNoElement && m_document.elements[index].type == Element::Type::ClipPath;
    }

    const std::vector<StyleProperty>& PropertiesOf(const Element& element) const {
        static const std::vector<StyleProperty> kNone;
        return element.styleIndex < 0 ? kNone
                                      : m_document.styles[static_cast<size_t>(element.styleIndex)].properties;
    }

    std::optional<Node> NextClip(Frame& frame, const Element& element) {
        const auto& properties = PropertiesOf(element);
        while (frame.nextProperty < properties.size()) {
            const StyleProperty& property = properties[frame.nextProperty++];
            if (property.type != StyleProperty::Type::ClipPathURL) continue;
            const uint64_t target = m_references.FindIndex(property.url);
            if (IsClipPath(target)) return Node{target, Role::ClipContainer};
        }
        return std::nullopt;
    }

    /// True if the element's own opacity makes it and its descendants invisible.
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

    std::optional<Node> NextReferenced(Frame& frame, const Element& element, Role role) {
        if (element.type != Element::Type::Use || frame.nextChild++ > 0) return std::nullopt;
        const uint64_t target = m_references.FindIndex(element.href);
        if (target == kNoElement) return std::nullopt;
        return Node{target, role == Role::Clipped && IsClipPath(target) ? Role::ClipContainer : role};
    }

    const Document& m_document;
    References m_references;
    std::vector<NodeRecord> m_records;
    std::vector<Frame> m_frames;
};

} // namespace

DrawingCost MeasureDrawing(const Document& document) { return DrawingCostSearch(document).Run(); }

} // namespace ozm
