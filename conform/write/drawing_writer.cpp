#include "write/drawing_writer.h"

#include "base/limits.h"
#include "geometry/number_text.h"
#include "geometry/path_writer.h"
#include "split/areas.h"
#include "write/precision.h"
#include "write/shape_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ozm::conform {
namespace {

/// How many items further a group may still turn out to save more.
constexpr size_t kLookAhead = 32;

void AppendEscaped(std::string_view text, std::string& out) {
    for (const char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        default: out += c;
        }
    }
}

/// A shape as text, and the clip paths around it, the outermost first.
struct WrittenItem {
    std::vector<const std::string*> clips; ///< Their ids.
    WrittenShape shape;
};

/// Writes one drawing.
class DrawingWriter {
public:
    DrawingWriter(const Scene& scene, int decimals)
        : m_scene(scene), m_decimals(decimals), m_gradients(scene.viewBox, decimals),
          m_shapes(m_gradients, decimals, scene.Tolerance()) {}

    std::string Write(const Document& document, const std::vector<Shape>& shapes) {
        std::vector<WrittenItem> items;
        items.reserve(shapes.size());
        size_t size = 0, visits = 0, segments = 0;
        for (const Shape& shape : shapes) {
            WrittenItem item{ClipsOf(shape), m_shapes.Write(shape)};
            if (item.shape.element.empty()) continue;
            size += item.shape.element.size();
            // What is written must be within the limits itself: a group for every shape, and for every clip
            // path another and what is in it.
            visits += 2 + 2 * item.clips.size();
            segments += shape.path.Verbs().size();
            if (size > kMaximumOutput || visits > kMaximumVisits || segments > kMaximumSegments) return {};
            items.push_back(std::move(item));
        }
        WriteClipped(items, 0);
        std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
        WriteFrame(text);
        text += '>';
        for (const std::string_view comment : document.LicenceComments()) {
            text += "<!--";
            text += comment;
            text += "-->";
        }
        WriteTitle(document, text);
        const std::string& gradients = m_gradients.Definitions();
        if (!gradients.empty() || !m_clipDefinitions.empty()) {
            text += "<defs>" + gradients + m_clipDefinitions + "</defs>";
        }
        text += m_body;
        text += "</svg>\n";
        return text;
    }

private:
    void WriteFrame(std::string& text) const {
        const auto add = [&](std::string_view name, double value) {
            std::string number;
            WriteSignificant(value, 7, 6, number);
            AppendAttribute(text, name, number);
        };
        if (m_scene.hasSize) {
            add("width", m_scene.width);
            add("height", m_scene.height);
        }
        const Box& box = m_scene.viewBox;
        text += " viewBox=\"";
        for (const double value : {box.left, box.top, box.Width(), box.Height()}) {
            if (text.back() != '"') text += ' ';
            WriteNumber(value, std::max(6, m_decimals), text);
        }
        text += '"';
    }

    static void WriteTitle(const Document& document, std::string& text) {
        for (const Node* child = document.Root()->firstChild; child; child = child->nextSibling) {
            if (child->tag != Tag::Title || child->text.empty()) continue;
            text += "<title>";
            AppendEscaped(child->text, text);
            text += "</title>";
            return;
        }
    }

    std::vector<const std::string*> ClipsOf(const Shape& shape) {
        std::vector<const std::string*> ids;
        if (!shape.clip) return ids;
        const Box painted = PaintedBox(shape);
        for (const Clip* clip = shape.clip; clip; clip = clip->outer) {
            // A rectangle around everything cuts nothing off.
            if (clip->isRectangle && BoxOf(clip->path).Grown(m_scene.Tolerance() * 1e-3).Contains(painted))
                continue;
            ids.push_back(&IdOf(*clip));
        }
        std::reverse(ids.begin(), ids.end());
        return ids;
    }

    const std::string& IdOf(const Clip& clip) {
        const std::string*& known = m_idOfClip[&clip];
        if (known) return *known;
        std::string data;
        WritePath(clip.path, m_decimals, data);
        std::string& id = m_clipIds[data];
        if (id.empty()) {
            id = "c" + std::to_string(m_clipIds.size());
            m_clipDefinitions += "<clipPath id=\"" + id + "\"><path d=\"" + data + "\"/></clipPath>";
        }
        known = &id;
        return id;
    }

    /// Writes neighbours under the same clip path, from `depth` on, into one group.
    void WriteClipped(std::span<const WrittenItem> items, size_t depth) {
        while (!items.empty()) {
            const auto clipOf = [&](const WrittenItem& item) {
                return item.clips.size() > depth ? item.clips[depth] : nullptr;
            };
            const std::string* const clip = clipOf(items.front());
            const auto end = std::find_if(items.begin(), items.end(),
                                          [&](const WrittenItem& item) { return clipOf(item) != clip; });
            const std::span<const WrittenItem> run(items.begin(), end);
            const bool isLast = run.size() == 1 && run.front().clips.size() == depth + 1;
            if (!clip) {
                WriteRun(run, {});
            } else if (isLast && !run.front().shape.hasTransform) {
                WriteItem(run.front(), {}, " clip-path=\"url(#" + *clip + ")\"");
            } else {
                m_body += "<g clip-path=\"url(#" + *clip + ")\">";
                WriteClipped(run, depth + 1);
                m_body += "</g>";
            }
            items = items.subspan(run.size());
        }
    }

    /// The attributes that two items have alike and a group may give them.
    static StyleAttributes CommonStyle(const StyleAttributes& a, const StyleAttributes& b) {
        StyleAttributes common;
        for (const auto& [name, value] : a) {
            const std::string* const other = FindAttribute(b, name);
            if (other && *other == value) common.emplace_back(name, value);
        }
        return common;
    }

    /// The attributes of an item that a group may give it and that no group around it does.
    static StyleAttributes SharableStyle(const WrittenItem& item, const StyleAttributes& outer) {
        StyleAttributes style;
        for (const auto& [name, value] : item.shape.style) {
            // A gradient would stay in force under other fills, and opacity would be multiplied.
            if (name == "opacity" || value.starts_with("url(") || FindAttribute(outer, name)) continue;
            style.emplace_back(name, value);
        }
        return style;
    }

    /// Bytes that writing these attributes once instead of `count` times saves.
    static ptrdiff_t SavingOf(const StyleAttributes& style, size_t count) {
        size_t bytes = 0;
        for (const auto& [name, value] : style) bytes += name.size() + value.size() + std::strlen(" =\"\"");
        return static_cast<ptrdiff_t>(bytes * (count - 1)) - static_cast<ptrdiff_t>(std::strlen("<g></g>"));
    }

    /// The items at the front that are best written as a group, and what they have in common.
    struct Front {
        size_t count = 1;
        StyleAttributes common;
    };

    static Front BestFront(std::span<const WrittenItem> items, const StyleAttributes& outer) {
        Front best;
        ptrdiff_t bestSaving = 0;
        StyleAttributes common = SharableStyle(items.front(), outer);
        for (size_t count = 2; count <= items.size() && !common.empty(); ++count) {
            common = CommonStyle(common, items[count - 1].shape.style);
            const ptrdiff_t saving = SavingOf(common, count);
            if (saving > bestSaving) {
                bestSaving = saving;
                best = {count, common};
            } else if (count > best.count + kLookAhead) {
                break;
            }
        }
        return best;
    }

    void WriteStyle(const StyleAttributes& style, const StyleAttributes& outer) {
        for (const auto& [name, value] : style) {
            if (FindAttribute(outer, name)) continue;
            AppendAttribute(m_body, name, value);
        }
    }

    void WriteItem(const WrittenItem& item, const StyleAttributes& outer, const std::string& more) {
        m_body += '<' + item.shape.element;
        WriteStyle(item.shape.style, outer);
        m_body += more + "/>";
    }

    /// Writes items under the same clip paths; `outer` is the style that groups around them give.
    void WriteRun(std::span<const WrittenItem> items, const StyleAttributes& outer) {
        while (!items.empty()) {
            const Front front = BestFront(items, outer);
            if (front.count == 1) {
                WriteItem(items.front(), outer, {});
            } else {
                m_body += "<g";
                WriteStyle(front.common, {});
                m_body += '>';
                StyleAttributes inner = outer;
                inner.insert(inner.end(), front.common.begin(), front.common.end());
                WriteRun(items.first(front.count), inner);
                m_body += "</g>";
            }
            items = items.subspan(front.count);
        }
    }

    const Scene& m_scene;
    const int m_decimals;
    GradientWriter m_gradients;
    ShapeWriter m_shapes;
    std::unordered_map<const Clip*, const std::string*> m_idOfClip;
    std::unordered_map<std::string, std::string> m_clipIds; ///< By path data.
    std::string m_clipDefinitions, m_body;
};

} // namespace

std::string WriteDrawing(const Document& document, const Scene& scene, const std::vector<Shape>& shapes,
                         const Options& options) {
    return DrawingWriter(scene, DecimalsFor(scene.viewBox, options.decimals)).Write(document, shapes);
}

} // namespace ozm::conform
