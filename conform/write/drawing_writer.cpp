#include "write/drawing_writer.h"

#include "geometry/number_text.h"
#include "geometry/path_writer.h"
#include "base/limits.h"
#include "split/areas.h"
#include "write/precision.h"
#include "write/shape_writer.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ozm::conform {
namespace {

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
        size_t size = 0;
        for (const Shape& shape : shapes) {
            WrittenItem item{ClipsOf(shape), m_shapes.Write(shape)};
            if (item.shape.element.empty()) continue;
            size += item.shape.element.size();
            if (size > kMaximumOutput) return {};
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
            text += ' ';
            text += name;
            text += "=\"";
            WriteSignificant(value, 7, 6, text);
            text += '"';
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
            if (clip->isRectangle && BoxOf(clip->path).Grown(m_scene.Tolerance() * 1e-3).Contains(painted)) continue;
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
            if (clip) {
                m_body += "<g clip-path=\"url(#" + *clip + ")\">";
                WriteClipped(run, depth + 1);
                m_body += "</g>";
            } else {
                WriteRun(run);
            }
            items = items.subspan(run.size());
        }
    }

    /// The attributes that all items have and a group may give them.
    static StyleAttributes CommonStyle(std::span<const WrittenItem> items) {
        StyleAttributes common;
        for (const auto& attribute : items.front().shape.style) {
            // A gradient would stay in force under other fills, and opacity would be multiplied.
            if (attribute.first == "opacity" || attribute.second.starts_with("url(")) continue;
            const bool isCommon = std::all_of(items.begin(), items.end(), [&](const WrittenItem& item) {
                const std::string* const other = FindAttribute(item.shape.style, attribute.first);
                return other && *other == attribute.second;
            });
            if (isCommon) common.push_back(attribute);
        }
        return common;
    }

    void WriteStyle(const StyleAttributes& style, const StyleAttributes& outer) {
        for (const auto& [name, value] : style) {
            if (FindAttribute(outer, name)) continue;
            m_body += ' ';
            m_body += name;
            m_body += "=\"" + value + '"';
        }
    }

    void WriteRun(std::span<const WrittenItem> items) {
        const StyleAttributes common = items.size() > 1 ? CommonStyle(items) : StyleAttributes();
        if (!common.empty()) {
            m_body += "<g";
            WriteStyle(common, {});
            m_body += '>';
        }
        for (const WrittenItem& item : items) {
            m_body += '<' + item.shape.element;
            WriteStyle(item.shape.style, common);
            m_body += "/>";
        }
        if (!common.empty()) m_body += "</g>";
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
