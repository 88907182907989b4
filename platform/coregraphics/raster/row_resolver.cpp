#include "raster/row_resolver.h"

#include <algorithm>
#include <cmath>

namespace ozcg {

namespace {

// Events closer than this are one, and those nearer to the row's bottom are left out: so little height is a
// quarter of a step of coverage.
constexpr float kLeastHeight = 1.0f / 1024;
// A height below the row.
constexpr float kNowhere = 2;
// Edges that change places by less than this, in pixels, do not cross.
constexpr float kLeastOverlap = 1.0f / 256;
// Edges times events, which bounds the time: in rows of many edges, more events are one, and fewer crossings
// count.
constexpr size_t kMaxWork = size_t{1} << 17;
constexpr size_t kMinCrossings = 8;
// An edge may lie so far to the left of a span without being seen in the sum of the pixel there.
constexpr float kSpanMargin = 1.0f / 32;
// By how much a mean winding may miss a whole number, and more for each edge.
constexpr float kMeanSlack = 1.0f / 1024;
constexpr float kRounding = 1e-6f;
// From here on std::sort is faster than insertion.
constexpr size_t kManyEdges = 48;

// Sorts what is mostly in order already.
template <typename T, typename Before>
void sortNearlySorted(T* values, size_t count, Before before) {
    if (count > kManyEdges) return std::sort(values, values + count, before);
    for (size_t i = 1; i < count; ++i) {
        if (!before(values[i], values[i - 1])) continue;
        const T value = values[i];
        size_t at = i;
        for (; at > 0 && before(value, values[at - 1]); --at) values[at] = values[at - 1];
        values[at] = value;
    }
}

} // namespace

// Beyond the ends, the end. A NaN, from a slope of infinity, gives the right one.
inline float RowResolver::Part::xAt(float y) const {
    return maxOf(minOf(x0 + slope * (y - y0), greatest), least);
}

void RowResolver::begin(std::span<const Edge> edges, int rows) {
    m_edges = edges;
    m_rows = rows;
    m_isIndexed = false;
    const size_t count = edges.size(), inRow = std::min(count, kMaxEdgesInRow);
    if (m_first.size() < static_cast<size_t>(rows)) m_first.resize(static_cast<size_t>(rows));
    if (m_next.size() < count) m_next.resize(count);
    if (m_partOf.size() < count) m_partOf.resize(count);
    m_active.reserve(inRow);
    if (m_parts.size() < inRow) m_parts.resize(inRow);
    if (m_strands.size() < inRow) m_strands.resize(inRow);
    if (m_starts.size() < inRow) m_starts.resize(inRow);
}

void RowResolver::indexEdges() {
    std::fill_n(m_first.begin(), m_rows, -1);
    for (size_t i = m_edges.size(); i-- > 0;) {
        const Edge& e = m_edges[i];
        if (e.y0 == e.y1) continue;
        const auto row = static_cast<size_t>(std::clamp(static_cast<int>(minOf(e.y0, e.y1)), 0, m_rows - 1));
        m_next[i] = m_first[row];
        m_first[row] = static_cast<int32_t>(i);
    }
    m_active.clear();
    m_isOverfull = false;
    m_nextRow = 0;
    m_isIndexed = true;
}

size_t RowResolver::moveTo(int y) {
    if (!m_isIndexed) indexEdges();
    m_top = static_cast<float>(y);
    std::erase_if(m_active, [&](const DownEdge& e) { return e.y1 <= m_top; });
    for (; m_nextRow <= y; ++m_nextRow) {
        for (int32_t i = m_first[static_cast<size_t>(m_nextRow)]; i >= 0;
             i = m_next[static_cast<size_t>(i)]) {
            const auto edge = static_cast<uint32_t>(i);
            const Edge& e = m_edges[edge];
            if (maxOf(e.y0, e.y1) <= m_top) continue;
            if (m_active.size() == kMaxEdgesInRow) {
                m_isOverfull = true;
                break;
            }
            DownEdge down = e.y0 < e.y1 ? DownEdge{e.x0, e.y0, e.x1, e.y1, 0, 1, edge}
                                        : DownEdge{e.x1, e.y1, e.x0, e.y0, 0, -1, edge};
            down.slope = (down.x1 - down.x0) / (down.y1 - down.y0);
            m_active.push_back(down);
        }
    }
    return m_isOverfull ? kMaxEdgesInRow + 1 : m_active.size();
}

std::optional<int> RowResolver::enterSpan(PixelSpan span) {
    m_strandsPassed = 0;
    m_left = static_cast<float>(span.begin);
    m_right = static_cast<float>(span.end);
    m_before = {};
    cutParts(m_left - kSpanMargin, m_right);
    return m_before.winding(m_active.size());
}

void RowResolver::addBoundary(float* cells, FillRule rule, int before) {
    m_cells = {cells};
    m_mask = rule == FillRule::evenOdd ? 1 : -1;
    m_windingBefore = before;
    linkParts();
    const size_t count = m_partCount;
    const float least = std::max(kLeastHeight, static_cast<float>(count) / static_cast<float>(kMaxWork));
    m_crossingsLeft = std::max(kMaxWork / (count + 1), kMinCrossings);
    for (float y = reorder(0, least); y <= 1 - least;) y = maxOf(pass(y, y + least), y);
    for (size_t i = 0; i < m_strandCount; ++i) addPart(*m_strands[i].part, 1);
}

// Adds an edge that lies to the left, from one height of the row to another.
inline void RowResolver::MeanWinding::add(int direction, float y0, float y1) {
    const float height = static_cast<float>(direction) * (y1 - y0);
    mean += height;
    weighted += height * (y0 + y1);
}

// Both means are the winding where it does not change.
inline std::optional<int> RowResolver::MeanWinding::winding(size_t edges) const {
    const float slack = kMeanSlack + kRounding * static_cast<float>(edges), nearest = std::nearbyint(mean);
    if (std::abs(mean - nearest) > slack || std::abs(weighted - nearest) > slack) return {};
    return static_cast<int>(nearest);
}

// Cuts the edges between left and right to the row.
void RowResolver::cutParts(float left, float right) {
    size_t count = 0;
    const float rowTop = m_top, rowBottom = m_top + 1;
    for (const DownEdge& e : m_active) {
        const float least = minOf(e.x0, e.x1), greatest = maxOf(e.x0, e.x1);
        if (least >= right) continue;
        const bool beginsHere = e.y0 > rowTop, endsHere = e.y1 < rowBottom;
        const float y0 = beginsHere ? e.y0 - rowTop : 0.0f, y1 = endsHere ? e.y1 - rowTop : 1.0f;
        if (greatest < left) {
            m_before.add(e.direction, y0, y1);
            continue;
        }
        const auto xAt = [&](float y) { return maxOf(minOf(e.x0 + e.slope * (y - e.y0), greatest), least); };
        Part& part = m_parts[count];
        part.x0 = beginsHere ? e.x0 : xAt(rowTop);
        part.y0 = y0;
        part.x1 = endsHere ? e.x1 : xAt(rowBottom);
        part.y1 = y1;
        part.least = minOf(part.x0, part.x1);
        part.greatest = maxOf(part.x0, part.x1);
        if (part.greatest < left) m_before.add(e.direction, y0, y1);
        if (part.greatest < left || part.least >= right) continue;
        part.slope = e.slope;
        part.direction = e.direction;
        part.effect = 0;
        part.edge = e.edge;
        part.continues = false;
        part.next = nullptr;
        m_partOf[e.edge] = static_cast<uint32_t>(count++);
    }
    m_partCount = count;
}

// Finds the parts that continue others, and collects the rest: those at the row's top as strands, and those
// that begin further down.
void RowResolver::linkParts() {
    Part* const parts = m_parts.data();
    for (size_t i = 0; i < m_partCount; ++i) {
        Part& part = parts[i];
        const uint32_t edge = part.edge + static_cast<uint32_t>(part.direction);
        if (part.y1 >= 1 || edge >= m_edges.size()) continue;
        // It may be left from another row or span: the part there is then of another edge.
        const uint32_t index = m_partOf[edge];
        if (index >= m_partCount) continue;
        Part& next = parts[index];
        if (next.edge != edge || next.direction != part.direction || next.y0 != part.y1 || next.x0 != part.x1)
            continue;
        part.next = &next;
        next.continues = true;
    }
    size_t startCount = 0, strandCount = 0;
    for (size_t i = 0; i < m_partCount; ++i) {
        if (parts[i].y0 <= 0)
            m_strands[strandCount++].part = &parts[i];
        else if (!parts[i].continues)
            m_starts[startCount++] = &parts[i];
    }
    m_strandCount = strandCount;
    m_startCount = startCount;
    m_nextStart = 0;
    sortNearlySorted(m_starts.data(), startCount, [](const Part* a, const Part* b) { return a->y0 < b->y0; });
}

inline float RowResolver::nextStart() const {
    return m_nextStart < m_startCount ? m_starts[m_nextStart]->y0 : kNowhere;
}

// Passes the events between a height and a line a little below it. From here on, a part counts if it crosses
// that line: so what counts is closed. Returns the height of the next event.
float RowResolver::pass(float y, float line) {
    if (m_crossingsLeft == 0) return reorder(y, line);
    float next = nextStart();
    if (next < line) return reorder(y, line);
    m_strandsPassed += m_strandCount;
    for (size_t i = 0; i < m_strandCount; ++i) {
        if (m_strands[i].event < line) {
            if (!passStrand(i, y, line)) return reorder(y, line);
            if (i > 0) next = minOf(next, m_strands[i - 1].event);
        }
        next = minOf(next, m_strands[i].event);
    }
    return next;
}

// Passes the events of a strand. Returns false if it ends.
bool RowResolver::passStrand(size_t strand, float y, float line) {
    Part*& part = m_strands[strand].part;
    if (part->y1 < line) {
        Part* const next = continuation(part, y, line);
        if (!next) return false;
        part = next;
        findCrossing(strand, y);
        if (strand > 0) findCrossing(strand - 1, y);
    }
    if (m_strands[strand].crossing < line && m_crossingsLeft > 0) exchange(strand, y);
    return true;
}

// A part itself if it crosses the line, else the one that continues it beyond the line, or NULL.
inline RowResolver::Part* RowResolver::continuation(Part* part, float y, float line) const {
    while (part && part->y1 < line) {
        Part* const next = part->next;
        addPart(*part, y);
        if (next) {
            next->effect = part->effect;
            next->since = y;
        }
        part->effect = 0;
        part = next;
    }
    return part;
}

// Lets go of the parts that have ended, adds those that have begun, and counts windings anew. Returns the
// height of the next event.
float RowResolver::reorder(float y, float line) {
    size_t kept = 0;
    const auto take = [&](Part* part) {
        if (Part* const last = continuation(part, y, line)) m_strands[kept++].part = last;
    };
    for (size_t i = 0; i < m_strandCount; ++i) take(m_strands[i].part);
    for (; nextStart() < line; ++m_nextStart) take(m_starts[m_nextStart]);
    m_strandCount = kept;
    m_strandsPassed += kept;
    sortStrands(y);
    float next = nextStart();
    int winding = m_windingBefore;
    for (size_t i = 0; i < kept; ++i) {
        Strand& strand = m_strands[i];
        strand.before = winding;
        setEffect(*strand.part, winding, y);
        winding += strand.part->direction;
        findCrossing(i, y);
        next = minOf(next, strand.event);
    }
    return next;
}

// Sorts the strands by where they are just below a height. They mostly are in order already.
inline void RowResolver::sortStrands(float y) {
    constexpr float kBelow = 1.0f / 64;
    float until = minOf(nextStart(), 1);
    for (size_t i = 0; i < m_strandCount; ++i) until = minOf(until, m_strands[i].part->y1);
    const float below = y + kBelow * (until - y);
    bool isMixed = false;
    float last = m_left - 1; // no part is so far to the left
    for (size_t i = 0; i < m_strandCount; ++i) {
        const float key = m_strands[i].part->xAt(below);
        m_strands[i].key = key;
        isMixed |= key < last;
        last = key;
    }
    if (isMixed)
        sortNearlySorted(m_strands.data(), m_strandCount,
                         [](const Strand& a, const Strand& b) { return a.key < b.key; });
}

// Finds out whether a strand changes places with the next.
inline void RowResolver::findCrossing(size_t strand, float y) {
    Strand& left = m_strands[strand];
    const Part& a = *left.part;
    left.event = a.y1;
    left.crossing = kNowhere;
    if (strand + 1 >= m_strandCount) return;
    const Part& b = *m_strands[strand + 1].part;
    if (a.greatest - b.least <= kLeastOverlap || m_crossingsLeft == 0) return;
    const float end = minOf(a.y1, b.y1), overlap = a.xAt(end) - b.xAt(end);
    if (overlap <= kLeastOverlap) return;
    const float gap = maxOf(b.xAt(y) - a.xAt(y), 0.0f);
    left.crossing = y + maxOf(end - y, 0.0f) * (gap / (gap + overlap));
    left.event = minOf(left.event, left.crossing);
}

// Lets a strand change places with the next.
void RowResolver::exchange(size_t strand, float y) {
    --m_crossingsLeft;
    Strand &left = m_strands[strand], &right = m_strands[strand + 1];
    std::swap(left.part, right.part);
    setEffect(*left.part, left.before, y);
    right.before = left.before + left.part->direction;
    setEffect(*right.part, right.before, y);
    findCrossing(strand, y);
    findCrossing(strand + 1, y);
    if (strand > 0) findCrossing(strand - 1, y);
}

// From a height on, a part has the effect that follows from the winding to its left.
inline void RowResolver::setEffect(Part& part, int before, float y) const {
    const int effect = ((before + part.direction) & m_mask ? 1 : 0) - (before & m_mask ? 1 : 0);
    if (effect == part.effect) return;
    addPart(part, y);
    part.effect = effect;
    part.since = y;
}

// Adds a part, with the effect that it has had, down to `until`.
void RowResolver::addPart(const Part& part, float until) const {
    if (part.effect == 0) return;
    const float x0 = maxOf(minOf(part.xAt(part.since), m_right), m_left);
    const float x1 = maxOf(minOf(part.xAt(until), m_right), m_left);
    const float height = until - part.since;
    if (height > 0) addShortEdge(m_cells, x0, x1, static_cast<float>(part.effect) * height);
}

} // namespace ozcg
