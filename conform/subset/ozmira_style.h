// Style as Ozmira itself reads and inherits it.
#pragma once

#include "geometry/path.h"
#include "geometry/stroke.h"
#include "source/document.h"

#include <Ozmira/ozmStyle.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// What Ozmira paints a shape with. Every member is inherited by copying, `opacity` multiplied.
struct OzmiraStyle {
    ozm::Color fill{0, 0, 0, 1}, stroke{0, 0, 0, 0};
    std::string_view fillReference; ///< Once set, it stays in force.
    double fillOpacity = 1, strokeOpacity = 1, opacity = 1;
    double strokeWidth = 1, miterLimit = 4;
    LineCap lineCap = LineCap::Butt;
    LineJoin lineJoin = LineJoin::Miter;
    FillRule fillRule = FillRule::NonZero;
    /// Where each property was last read: the byte of the attribute.
    std::array<uint32_t, static_cast<size_t>(kLastPresentation) + 1> offsets{};

    bool HasFill() const { return fill.a > 0 && fillOpacity > 0; }
    bool HasStroke() const { return stroke.a > 0 && strokeOpacity > 0; }
    uint32_t OffsetOf(Attr property) const { return offsets[static_cast<size_t>(property)]; }
};

/// What Ozmira takes from an element itself.
struct OzmiraElement {
    bool isHidden = false;
    double opacity = 1;
    std::vector<std::string_view> clips; ///< Ids; each is applied.
};

/// Applies an element's attributes to the style that it inherits.
OzmiraElement ApplyOzmiraStyle(const Node& node, OzmiraStyle& style);

/// True when Ozmira takes exactly this value for a property from a `style` attribute.
bool ReadsFromStyle(std::string_view styleText, std::string_view property, std::string_view value);

} // namespace ozm::conform
