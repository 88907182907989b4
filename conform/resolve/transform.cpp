// Transforms of elements, gradients and patterns.
#include "geometry/text.h"
#include "geometry/transform_reader.h"
#include "resolve/walker.h"

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

Matrix Walker::AboutOrigin(const Node& node, const Matrix& transform, bool isUserSpace,
                           const Context& context) {
    const std::string_view text = ComputeStyle({}, m_sheets.Of(node)).transformOrigin;
    if (text.empty()) return transform;
    const Box box =
        Box::OfSize(0, 0, isUserSpace ? context.viewWidth : 1, isUserSpace ? context.viewHeight : 1);
    return About(ReadOrigin(text, box, context), transform);
}

bool Walker::EnterTransform(const Node& node, Context& context) {
    const ComputedStyle& style = context.style;
    Matrix local;
    if (!style.transform.empty()) {
        const Declaration* const source = style.SourceOf(Attr::Transform);
        const bool isAttribute = source && source->origin == Origin::Attribute;
        const TransformUnits units{{context.viewWidth, context.viewHeight}, style.fontSize, 16};
        local = ReadTransform(style.transform,
                              isAttribute ? TransformSyntax::Attribute : TransformSyntax::Style, units)
                    .value_or(Matrix{});
        if (!style.transformOrigin.empty() || style.isBoxOrigin) {
            const Box box = style.isBoxOrigin ? ObjectBox(node, context)
                                              : Box::OfSize(0, 0, context.viewWidth, context.viewHeight);
            const std::string_view text = style.transformOrigin.empty() ? "0 0" : style.transformOrigin;
            if (!box.IsEmpty()) {
                local = About(ReadOrigin(text, box, context), local);
            }
        }
    }
    if (context.isSeen) m_differences.CompareTransform(node, context, local);
    context.matrix = context.matrix * local;
    return context.matrix.Determinant() != 0 && IsFinite(context.matrix);
}

} // namespace ozm::conform
