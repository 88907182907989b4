#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"

#include <cmath>

namespace ozm {
namespace {

double Radians(double degrees) { return degrees * 0.017453292519943295; }

/// The arguments of one item, those that were left out being 0.
struct Arguments {
    double values[6] = {};
    int count = 0;
};

/// Reads between `required` and `allowed` numbers and the ")" behind them. Returns the place behind it, or
/// null.
const char* ReadArguments(const char* at, const char* end, int required, int allowed, Arguments& arguments) {
    at = SkipWhitespace(at, end);
    while (arguments.count < allowed) {
        if (arguments.count > 0) at = SkipSeparator(at, end);
        const char* const next = ReadDecimal(at, end, arguments.values[arguments.count]);
        if (!next) break;
        at = next;
        ++arguments.count;
    }
    at = SkipWhitespace(at, end);
    return arguments.count >= required && at != end && *at == ')' ? at + 1 : nullptr;
}

using Compose = void (*)(Transform& m, const Arguments& arguments);

void ComposeMatrix(Transform& m, const Arguments& arguments) {
    const auto& [a, b, c, d, tx, ty] = arguments.values;
    m = TransformConcat({a, b, c, d, tx, ty}, m);
}

void ComposeTranslate(Transform& m, const Arguments& arguments) {
    const double tx = arguments.values[0], ty = arguments.values[1];
    m.tx += tx * m.a + ty * m.c;
    m.ty += tx * m.b + ty * m.d;
}

void ComposeScale(Transform& m, const Arguments& arguments) {
    const double sx = arguments.values[0];
    const double sy = arguments.count > 1 ? arguments.values[1] : sx;
    m.a *= sx;
    m.b *= sx;
    m.c *= sy;
    m.d *= sy;
}

void ComposeRotate(Transform& m, const Arguments& arguments) {
    const double angle = Radians(arguments.values[0]);
    const double cx = arguments.values[1], cy = arguments.values[2];
    const double s = std::sin(angle), c = std::cos(angle);
    const double tx = cx - c * cx + s * cy, ty = cy - s * cx - c * cy;
    m = {c * m.a + s * m.c, c * m.b + s * m.d,          c * m.c - s * m.a,
         c * m.d - s * m.b, tx * m.a + ty * m.c + m.tx, tx * m.b + ty * m.d + m.ty};
}

void ComposeSkewX(Transform& m, const Arguments& arguments) {
    const double t = std::tan(Radians(arguments.values[0]));
    m.c += t * m.a;
    m.d += t * m.b;
}

void ComposeSkewY(Transform& m, const Arguments& arguments) {
    const double t = std::tan(Radians(arguments.values[0]));
    m.a += t * m.c;
    m.b += t * m.d;
}

struct Item {
    std::string_view name;
    int required, allowed; ///< Number of arguments.
    Compose compose;
};

constexpr Item kItems[] = {
    {"matrix(", 6, 6, ComposeMatrix}, {"translate(", 1, 2, ComposeTranslate}, {"scale(", 1, 2, ComposeScale},
    {"rotate(", 1, 3, ComposeRotate}, {"skewX(", 1, 1, ComposeSkewX},         {"skewY(", 1, 1, ComposeSkewY},
};

const Item* FindItem(StringView text) {
    for (const Item& item : kItems) {
        if (text.HasPrefix(item.name)) return &item;
    }
    return nullptr;
}

} // namespace

bool SVGParser::ParseTransform(StringView text, Transform& out) {
    // No item fits into fewer characters; trailing whitespace ends here, too.
    constexpr uint64_t kShortestItem = 7;

    out = TransformIdentity;
    if (text.empty()) return false;
    while (!text.empty()) {
        text = text.TrimLeadingWhitespace();
        if (text.length < kShortestItem) return false;
        const Item* const item = FindItem(text);
        if (!item) return false;
        Arguments arguments;
        const char* const next = ReadArguments(text.data + item->name.size(), text.end(), item->required,
                                               item->allowed, arguments);
        if (!next) return false;
        item->compose(out, arguments);
        text = text.CutFront(static_cast<uint64_t>(next - text.data));
    }
    return true;
}

} // namespace ozm
