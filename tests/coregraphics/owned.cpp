#include "owned.h"

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace {

constexpr double kRoundingError = 1e-12; // Anything smaller is written as 0.

// Unlike streams, strtod reads "inf" and "nan".
double nextNumber(std::istream& in) {
    std::string word;
    in >> word;
    return std::strtod(word.c_str(), nullptr);
}

CGPoint nextPoint(std::istream& in) {
    const double x = nextNumber(in);
    return {x, nextNumber(in)};
}

} // namespace

Owned<CGMutablePathRef> pathFromText(const std::string& text) {
    Owned<CGMutablePathRef> path(CGPathCreateMutable());
    std::istringstream in(text);
    for (char command = 0; in >> command;) {
        CGPoint p[3] = {};
        const int count = command == 'Z' ? 0 : command == 'Q' ? 2 : command == 'C' ? 3 : 1;
        for (int i = 0; i < count; ++i) p[i] = nextPoint(in);
        switch (command) {
        case 'M': CGPathMoveToPoint(path, nullptr, p[0].x, p[0].y); break;
        case 'L': CGPathAddLineToPoint(path, nullptr, p[0].x, p[0].y); break;
        case 'Q': CGPathAddQuadCurveToPoint(path, nullptr, p[0].x, p[0].y, p[1].x, p[1].y); break;
        case 'C': CGPathAddCurveToPoint(path, nullptr, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y); break;
        case 'Z': CGPathCloseSubpath(path); break;
        default: throw std::invalid_argument("unknown path command in " + text);
        }
    }
    return path;
}

std::string textOf(CGPathRef path) {
    std::ostringstream out;
    CGPathApply(path, &out, [](void* info, const CGPathElement* element) {
        static constexpr int counts[] = {1, 1, 2, 3, 0};
        auto& text = *static_cast<std::ostringstream*>(info);
        if (text.tellp() > 0) text << ' ';
        text << "MLQCZ"[element->type];
        for (int i = 0; i < counts[element->type]; ++i)
            for (const double v : {element->points[i].x, element->points[i].y})
                text << ' ' << (std::abs(v) < kRoundingError ? 0 : v);
    });
    return out.str();
}
