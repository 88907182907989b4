#include "resolve/viewport.h"

#include "geometry/number_text.h"
#include "geometry/text.h"

#include <algorithm>

namespace ozm::conform {

std::optional<Box> ReadViewBox(std::string_view text) {
    double numbers[4] = {};
    const char* p = text.data();
    const char* const end = p + text.size();
    for (double& number : numbers) {
        SkipSpacesAndComma(p, end);
        if (!ReadNumber(p, end, number)) return {};
    }
    SkipSpaces(p, end);
    if (p != end || !(numbers[2] > 0 && numbers[3] > 0)) return {};
    return Box::OfSize(numbers[0], numbers[1], numbers[2], numbers[3]);
}

AspectRatio ReadAspectRatio(std::string_view text) {
    AspectRatio ratio;
    std::string_view align = NextWord(text);
    if (align == "defer") align = NextWord(text);
    if (align == "none") {
        ratio.isStretched = true;
        return ratio;
    }
    const auto share = [&](size_t at, double& value) {
        const std::string_view word = align.substr(std::min(at, align.size()), 3);
        if (word == "Min") value = 0;
        if (word == "Max") value = 1;
    };
    if (align.size() == 8) {
        share(1, ratio.alignX);
        share(5, ratio.alignY);
    }
    ratio.isSlice = NextWord(text) == "slice";
    return ratio;
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
