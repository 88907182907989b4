#pragma once

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

/// The largest size with the proportions of `viewPort` inside `size`. A component of `size` that is not
/// positive sets no limit; without any limit the result is `viewPort`. Where both components limit alike, the
/// height decides.
CGSize FitToSize(CGSize viewPort, CGSize size);

/// As `FitToSize`, each component rounded up to whole pixels at `scale` pixels a point.
CGSize FitToPixels(CGSize viewPort, CGSize size, double scale);

} // namespace ozm
