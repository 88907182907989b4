// Transforms of elements, gradients and patterns.
#include "geometry/text.h"
#include "geometry/transform_reader.h"
#include "resolve/walker.h"

#include <string>
#include <utility>

namespace ozm::conform {
namespace {

/// The point that `transform-origin` names: one or two words or lengths.
Point ReadOrigin(std::string_view text, const Box& box, const Context& context) {
    Point origin{box.left, box.top};
    std::string_view words[2] = {NextWord(text), NextWord(text)};
    const auto isVertical = [](std::string_view word) { return word == "top" || word == "bottom"; };
    const auto isHorizontal = [](std::string_view word) { return word == "left" || word == "right"; };
    if (isVertical(words[0]) || isHorizontal(words[1])) std::swap(words[0], words[1]);
    const auto place = [](std::string_view word, double start, double size, const LengthBase& base) {
        if (word.empty() || word == "center") return start + size / 2;
        if (word == "left" || word == "top") return start;
        if (word == "right" || word == "bottom") return start + size;
        return start +
               Resolve(ReadLength(word).value_or(CssLength{}), {size, base.fontSize, base.rootFontSize});
    };
    origin.x = place(words[0], box.left, box.Width(), context.BaseX());
    origin.y = place(words[1], box.top, box.Height(), context.BaseY());
    return origin;
}

Matrix About(Point origin, const Matrix& matrix) {
    return Matrix::Translation(origin.x, origin.y) * matrix * Matrix::Translation(-origin.x, -origin.y);
}

} // namespace

Matrix Walker::TemplateTransform(const TemplateChain& chain, Attr attr, bool isUserSpace,
                                 const Context& context) {
    std::optional<Matrix> transform;
    for (const Node* const node : chain.Nodes()) {
        const ComputedStyle& style = StyleInPlace(*node);
        if (!style.transform.empty() && !style.isTransformAttribute) {
            transform = ReadTransform(style.transform, TransformSyntax::Style).value_or(Matrix{});
        } else if (const Attribute* const attribute = node->Find(attr)) {
            transform = ReadTransform(attribute->value, TransformSyntax::Attribute).value_or(Matrix{});
        }
        if (transform) break;
    }
    if (!transform) return {};
    const std::string_view text = StyleInPlace(*chain.Nodes().front()).transformOrigin;
    if (text.empty()) return *transform;
    const Box box =
        Box::OfSize(0, 0, isUserSpace ? context.viewWidth : 1, isUserSpace ? context.viewHeight : 1);
    return About(ReadOrigin(text, box, context), *transform);
}

Matrix Walker::TransformOf(const Node& node, const Context& context) {
    const ComputedStyle& style = context.style;
    if (style.transform.empty() && style.translate.empty() && style.rotate.empty() && style.scale.empty()) {
        return {};
    }
    const bool isRoot = !node.parent;
    const bool hasBox = style.isBoxOrigin || isRoot;
    const Box box = isRoot              ? m_scene->viewBox
                    : style.isBoxOrigin ? ObjectBox(node, context)
                                        : Box::OfSize(0, 0, context.viewWidth, context.viewHeight);
    TransformUnits units{{context.viewWidth, context.viewHeight}, style.fontSize, style.rootFontSize};
    if (hasBox && !box.IsEmpty()) units.percentBase = {box.Width(), box.Height()};
    const auto read = [&](std::string_view text, TransformSyntax syntax) {
        return ReadTransform(text, syntax, units).value_or(Matrix{});
    };
    const auto readPart = [&](std::string_view name, std::string_view arguments) {
        if (arguments.empty()) return Matrix{};
        std::string function(name);
        for (std::string_view word = NextWord(arguments); !word.empty(); word = NextWord(arguments)) {
            function += function.ends_with('(') ? "" : ",";
            function += word;
        }
        return read(function + ')', TransformSyntax::Style);
    };
    Matrix local = readPart("translate(", style.translate) * readPart("rotate(", style.rotate) *
                   readPart("scale(", style.scale);
    if (!style.transform.empty()) {
        local = local * read(style.transform, style.isTransformAttribute ? TransformSyntax::Attribute
                                                                         : TransformSyntax::Style);
    }
    if (isRoot) {
        // Lengths of the root's transform are pixels of the page.
        local = Matrix::Scaling(m_unitsPerPixel, m_unitsPerPixel) * local *
                Matrix::Scaling(1 / m_unitsPerPixel, 1 / m_unitsPerPixel);
    }
    if ((style.transformOrigin.empty() && !hasBox) || box.IsEmpty()) return local;
    const std::string_view origin = !style.transformOrigin.empty() ? style.transformOrigin
                                    : isRoot                       ? "50% 50%"
                                                                   : "0 0";
    return About(ReadOrigin(origin, box, context), local);
}

bool Walker::EnterTransform(const Node& node, Context& context) {
    const Matrix local = TransformOf(node, context);
    if (context.isSeen) m_differences.CompareTransform(node, context, local);
    context.matrix = node.parent ? context.matrix * local : local * context.matrix;
    return context.matrix.Determinant() != 0 && IsFinite(context.matrix);
}

} // namespace ozm::conform
