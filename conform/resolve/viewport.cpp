#include "resolve/viewport.h"

#include "geometry/number_text.h"
#include "geometry/text.h"

#include <algorithm>

namespace ozm::conform {

namespace {

/// Reads the four numbers of a `viewBox`; false for anything else.
bool ReadNumbers(std::string_view text, double (&numbers)[4]) {
    const char* p = text.data();
    const char* const end = p + text.size();
    for (double& number : numbers) {
        SkipSpacesAndComma(p, end);
        if (!ReadNumber(p, end, number)) return false;
    }
    SkipSpaces(p, end);
    return p == end;
}

} // namespace

std::optional<Box> ReadViewBox(std::string_view text) {
    double numbers[4] = {};
    if (!ReadNumbers(text, numbers) || !(numbers[2] > 0 && numbers[3] > 0)) return {};
    return Box::OfSize(numbers[0], numbers[1], numbers[2], numbers[3]);
}

bool IsEmptyViewBox(std::string_view text) {
    double numbers[4] = {};
    return ReadNumbers(text, numbers) && std::min(numbers[2], numbers[3]) == 0;
}

AspectRatio ReadAspectRatio(std::string_view text) {
    AspectRatio ratio;
    std::string_view align = NextWord(text);
    if (align == "defer") align = NextWord(text);
    const std::string_view size = NextWord(text);
    if (!(size.empty() || size == "meet" || size == "slice") || !NextWord(text).empty()) return ratio;
    if (align == "none") {
        ratio.isStretched = true;
        return ratio;
    }
    const auto share = [&](std::string_view word) {
        return word == "Min" ? 0 : word == "Mid" ? 0.5 : word == "Max" ? 1 : -1.0;
    };
    if (align.size() != 8 || align[0] != 'x' || align[4] != 'Y') return ratio;
    const double x = share(align.substr(1, 3)), y = share(align.substr(5, 3));
    if (x < 0 || y < 0) return ratio;
    return {x, y, false, size == "slice"};
}

Matrix FitViewBox(const Box& viewBox, const Box& viewport, const AspectRatio& ratio) {
    double sx = viewport.Width() / viewBox.Width(), sy = viewport.Height() / viewBox.Height();
    if (!ratio.isStretched) sx = sy = ratio.isSlice ? std::max(sx, sy) : std::min(sx, sy);
    const double freeX = viewport.Width() - viewBox.Width() * sx;
    const double freeY = viewport.Height() - viewBox.Height() * sy;
    const double alignX = ratio.isStretched ? 0 : ratio.alignX, alignY = ratio.isStretched ? 0 : ratio.alignY;
    return {sx,
            0,
            0,
            sy,
            viewport.left + freeX * alignX - viewBox.left * sx,
            viewport.top + freeY * alignY - viewBox.top * sy};
}

} // namespace ozm::conform
