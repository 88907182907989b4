#pragma once

#include <Ozmira/ozmElement.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

// Not inlined, so that their rectangles do not enlarge the frames of the recursive callers, which must get by
// with stacks as small as 512 KB.

/// Adds the outline of an `Ellipse` element to the context's current path.
[[gnu::noinline]] void AddEllipse(const Element& element, CGContextRef context);
/// Adds the outline of a `Rect` element, rounded corners included, to the context's current path.
[[gnu::noinline]] void AddRect(const Element& element, CGContextRef context);

} // namespace ozm
