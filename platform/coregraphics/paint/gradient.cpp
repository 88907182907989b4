#include "paint/gradient.h"

#include "base/out_of_memory.h"
#include "base/ref.h"
#include "base/unorm8.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using ozcg::ColorRamp;
using ozcg::GradientStop;
using ozcg::Rgba;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::array<float, 4> components(const Rgba& color) {
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, -1e30, 1e30)); };
    return {component(color.r), component(color.g), component(color.b), component(color.a)};
}

void writeColors(const ColorRamp& piece, std::span<const double> positions, uint32_t* rgba) {
    const auto& [r, g, b, a] = piece.color;
    if (piece.fractionPerPosition == 0) // Where a piece begins at infinity, its colour is constant.
        std::fill_n(rgba, positions.size(), ozcg::premultipliedPixel({r, g, b, a}));
    else
        ozcg::writeRamp(piece, positions, rgba);
}

// The location of the stop at `index` of `count`.
double locationOf(const CGFloat* locations, size_t index, size_t count) {
    if (locations) return ozcg::clampedToUnit(locations[index]);
    return count > 1 ? static_cast<double>(index) / static_cast<double>(count - 1) : 0;
}

} // namespace

CGGradient::CGGradient(std::vector<GradientStop> stops) : Object(ozcg::TypeId::gradient) {
    std::stable_sort(stops.begin(), stops.end(),
                     [](const GradientStop& a, const GradientStop& b) { return a.location < b.location; });
    m_pieces.reserve(stops.size() + 3);
    const GradientStop &first = stops.front(), &last = stops.back();
    appendConstant(-kInfinity, first.color);
    appendConstant(0, first.color);
    for (size_t i = 1; i < stops.size(); ++i) {
        const GradientStop &from = stops[i - 1], &to = stops[i];
        if (from.location < to.location)
            append(from.location, from.color, to.color, to.location - from.location);
    }
    appendConstant(last.location, last.color);
    appendConstant(std::nextafter(1, kInfinity), last.color);
}

void CGGradient::appendConstant(double begin, const Rgba& color) { append(begin, color, color, 0); }

void CGGradient::append(double begin, const Rgba& from, const Rgba& to, double length) {
    const std::array<float, 4> color = components(from), end = components(to);
    const std::array change = {end[0] - color[0], end[1] - color[1], end[2] - color[2], end[3] - color[3]};
    const bool isConstant = change == decltype(change){};
    // The inverse of a length may overflow.
    const double perPosition = isConstant ? 0 : std::min(1 / length, std::numeric_limits<double>::max());
    // Position 0 itself has the first stop's colour.
    if (m_pieces.size() > 1) begin = std::max(begin, std::numeric_limits<double>::denorm_min());
    m_pieces.push_back({begin, perPosition, color, change});
}

void CGGradient::colorsAt(std::span<const double> positions, ozcg::PositionOrder order,
                          CGGradientDrawingOptions options, uint32_t* rgba) const noexcept {
    const auto first = m_pieces.begin(), last = m_pieces.end() - 1;
    while (!positions.empty()) {
        const double position = positions[0];
        const bool isNowhere = std::isnan(position);
        // The first piece begins before every position.
        const auto piece = std::upper_bound(first + 1, m_pieces.end(), position,
                                            [](double p, const auto& each) { return !(p >= each.begin); }) -
                           1;
        const double begin = piece->begin, end = piece == last ? kInfinity : (piece + 1)->begin;
        const auto isWithin = [=](double p) { return isNowhere ? std::isnan(p) : p >= begin && p < end; };
        const auto rest = positions.subspan(1);
        const auto next = order == ozcg::PositionOrder::sorted
                              ? std::partition_point(rest.begin(), rest.end(), isWithin)
                              : std::find_if_not(rest.begin(), rest.end(), isWithin);
        const auto n = static_cast<size_t>(next - rest.begin()) + 1;
        const bool isDrawn = piece == first  ? options & kCGGradientDrawsBeforeStartLocation
                             : piece == last ? options & kCGGradientDrawsAfterEndLocation
                                             : true;
        if (isDrawn && !isNowhere)
            writeColors(*piece, positions.first(n), rgba);
        else
            std::fill_n(rgba, n, 0);
        positions = positions.subspan(n);
        rgba += n;
    }
}

CFTypeID CGGradientGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::gradient); }

CGGradientRef CGGradientCreateWithColorComponents(CGColorSpaceRef space, const CGFloat* components,
                                                  const CGFloat* locations, size_t count) {
    if (!space) return ozcg::createdFrom<CGGradient>(space);
    if (!components || count == 0) return ozcg::noObject<CGGradient>();
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(CGGradientRef{}, [&] {
        std::vector<GradientStop> stops(count);
        for (size_t i = 0; i < count; ++i) {
            const CGFloat* const color = components + i * (space->components() + 1);
            stops[i] = {locationOf(locations, i, count), ozcg::rgbaFromComponents(*space, color)};
        }
        return new CGGradient(std::move(stops));
    }));
}

CGGradientRef CGGradientCreateWithColors(CGColorSpaceRef, CFArrayRef colors, const CGFloat* locations) {
    const auto count = static_cast<size_t>(CFArrayGetCount(colors));
    if (!colors) return ozcg::createdFrom<CGGradient>(colors);
    for (const void* const value : colors->values) {
        if (!value) return ozcg::createdFrom<CGGradient>(CGColorRef{});
        if (CFGetTypeID(value) != CGColorGetTypeID()) return ozcg::noObject<CGGradient>();
    }
    if (count == 0) return ozcg::noObject<CGGradient>();
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(CGGradientRef{}, [&] {
        std::vector<GradientStop> stops(count);
        for (size_t i = 0; i < count; ++i) {
            const void* const value = colors->values[i];
            stops[i] = {locationOf(locations, i, count), static_cast<const CGColor*>(value)->rgba()};
        }
        return new CGGradient(std::move(stops));
    }));
}

CGGradientRef CGGradientRetain(CGGradientRef gradient) { return ozcg::retained(gradient); }

void CGGradientRelease(CGGradientRef gradient) { ozcg::released(gradient); }
