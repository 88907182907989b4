#include "paint/gradient.h"

#include "base/out_of_memory.h"
#include "base/ref.h"
#include "base/unorm8.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

using ozcg::GradientStop;
using ozcg::Rgba;

constexpr size_t kLast = ozcg::kGradientTableSize - 1;

// The first entry at or after a location.
size_t entryAt(double location) { return static_cast<size_t>(std::ceil(location * kLast)); }

bool isPaintable(const Rgba& c) {
    const auto within = [](double value) { return value >= 0 && value <= 1; };
    return within(c.r) && within(c.g) && within(c.b) && within(c.a);
}

float toFloat(double value) { return static_cast<float>(std::clamp(value, -1e30, 1e30)); }

// Sets the entries from one stop up to the next. `limit` clamps a component to 0...1; the compiler vectorises
// the loop where it does nothing.
template <class Limit>
void mix(uint32_t* table, const GradientStop& from, const GradientStop& to, Limit limit) {
    const auto first = static_cast<int>(entryAt(from.location)), end = static_cast<int>(entryAt(to.location));
    const double entries = (to.location - from.location) * kLast;
    // In double precision, because stops may lie close together.
    const auto start = static_cast<float>(ozcg::clampedToUnit((first - from.location * kLast) / entries));
    const auto step = static_cast<float>(1 / std::max(1.0, entries));
    const auto ramp = [&](double Rgba::*component) {
        const float low = toFloat(from.color.*component);
        const float slope = toFloat(to.color.*component - from.color.*component);
        return [=](float t) { return limit(low + slope * t); };
    };
    const auto r = ramp(&Rgba::r), g = ramp(&Rgba::g), b = ramp(&Rgba::b), a = ramp(&Rgba::a);
    for (int i = first; i < end; ++i) {
        const float t = start + static_cast<float>(i - first) * step, opacity = a(t);
        const int32_t alpha = ozcg::unorm8(opacity);
        // Rounding may take a component slightly beyond 1; it must not exceed alpha.
        const auto color = [=](float value) {
            return static_cast<uint32_t>(std::min<int32_t>(ozcg::unorm8(value * opacity), alpha));
        };
        table[i] = ozcg::pixelOf(color(r(t)), color(g(t)), color(b(t)), static_cast<uint32_t>(alpha));
    }
}

void mix(uint32_t* table, const GradientStop& from, const GradientStop& to) {
    if (isPaintable(from.color) && isPaintable(to.color))
        mix(table, from, to, [](float value) { return value; });
    else
        mix(table, from, to, [](float value) { return static_cast<float>(ozcg::clampedToUnit(value)); });
}

// The location of the stop at `index` of `count`.
double locationOf(const CGFloat* locations, size_t index, size_t count) {
    if (locations) return ozcg::clampedToUnit(locations[index]);
    return count > 1 ? static_cast<double>(index) / static_cast<double>(count - 1) : 0;
}

} // namespace

CGGradient::CGGradient(std::vector<GradientStop> stops) noexcept : Object(ozcg::TypeId::gradient) {
    std::stable_sort(stops.begin(), stops.end(),
                     [](const GradientStop& a, const GradientStop& b) { return a.location < b.location; });
    const uint32_t before = ozcg::premultipliedPixel(stops.front().color);
    const uint32_t after = ozcg::premultipliedPixel(stops.back().color);
    std::fill_n(table, entryAt(stops.front().location), before);
    for (size_t i = 1; i < stops.size(); ++i)
        if (stops[i - 1].location < stops[i].location) mix(table, stops[i - 1], stops[i]);
    std::fill(table + entryAt(stops.back().location), std::end(table), after);
    table[0] = before;
    table[kLast] = after;
}

CFTypeID CGGradientGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::gradient); }

CGGradientRef CGGradientCreateWithColorComponents(CGColorSpaceRef space, const CGFloat* components,
                                                  const CGFloat* locations, size_t count) {
    if (!space || !components || count == 0) return nullptr;
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
    const auto isColor = [](const void* value) { return CFGetTypeID(value) == CGColorGetTypeID(); };
    if (count == 0 || !std::all_of(colors->values.begin(), colors->values.end(), isColor)) return nullptr;
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
