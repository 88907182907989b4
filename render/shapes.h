#pragma once

#include <Ozmira/ozmElement.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

// Neither is inlined into the functions that recurse on stacks as small as 512 KB: their frames hold no
// rectangle.

/// Adds the outline of an `Ellipse` element to the context's current path.
[[gnu::noinline]] void AddEllipse(const Element& element, CGContextRef context);
/// Adds the outline of a `Rect` element, rounded corners included, to the context's current path.
[[gnu::noinline]] void AddRect(const Element& element, CGContextRef context);

} // namespace ozm
