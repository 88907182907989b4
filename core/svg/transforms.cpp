#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"

#include <cmath>

namespace ozm {
namespace {

double Radians(double degrees) { return degrees * 0.017453292519943295; }

/// The arguments of one transform function. Omitted arguments are 0.
struct Arguments {
    double values[6] = {};
    int count = 0;
};

/// Reads at least `required` and at most `allowed` numbers and the ")" after them. Returns the end of
/// the text read, or null.
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

/// Changes `m` so that it applies the transform function first, then what it applied before.
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

struct TransformFunction {
    std::string_view name;
    int required, allowed; ///< Number of arguments.
    Compose compose;
};

constexpr TransformFunction kFunctions[] = {
    {"matrix(", 6, 6, ComposeMatrix}, {"translate(", 1, 2, ComposeTranslate}, {"scale(", 1, 2, ComposeScale},
    {"rotate(", 1, 3, ComposeRotate}, {"skewX(", 1, 1, ComposeSkewX},         {"skewY(", 1, 1, ComposeSkewY},
};

const TransformFunction* FindFunction(StringView text) {
    for (const TransformFunction& function : kFunctions) {
        if (text.HasPrefix(function.name)) return &function;
    }
    return nullptr;
}

} // namespace

bool SVGParser::ParseTransform(StringView text, Transform& out) {
    // Shorter than every function. This also rejects trailing whitespace.
    constexpr uint64_t kMinFunctionLength = 7;

    out = TransformIdentity;
    if (text.empty()) return false;
    while (!text.empty()) {
        text = text.TrimLeadingWhitespace();
        if (text.length < kMinFunctionLength) return false;
        const TransformFunction* const function = FindFunction(text);
        if (!function) return false;
        Arguments arguments;
        const char* const next = ReadArguments(text.data + function->name.size(), text.end(),
                                               function->required, function->allowed, arguments);
        if (!next) return false;
        function->compose(out, arguments);
        text = text.CutFront(static_cast<uint64_t>(next - text.data));
    }
    return true;
}

} // namespace ozm
