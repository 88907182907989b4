// Colour spaces: how many components their colours have.
#pragma once

#include "values/data.h"

#include <CoreGraphics/CGColorSpace.h>

struct CGColorSpace final : ozcg::Object {
    /// One of the shared spaces.
    constexpr CGColorSpace(CGColorSpaceModel colorModel, CFStringRef spaceName) noexcept
        : Object(ozcg::TypeId::colorSpace, Lifetime::immortal), model(colorModel), name(spaceName) {}
    /// An RGB space of its own.
    CGColorSpace() noexcept : Object(ozcg::TypeId::colorSpace), model(kCGColorSpaceModelRGB), name(nullptr) {}

    constexpr size_t components() const noexcept { return model == kCGColorSpaceModelRGB ? 3 : 1; }

    const CGColorSpaceModel model;
    const CFStringRef name; // a constant, or NULL
};

namespace ozcg {

/// The shared space objects, borrowed.
CGColorSpace* deviceRGB() noexcept;
CGColorSpace* deviceGray() noexcept;

} // namespace ozcg
