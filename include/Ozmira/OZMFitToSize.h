#pragma once

#include <Ozmira/OzmiraExport.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

/// The largest size with the proportions of `viewPort` inside `size`. A component of `size` that is not
/// positive sets no limit; without any limit the result is `viewPort`. If both allow the same scale, the
/// height determines the result.
OZM_CXX_EXPORT CGSize FitToSize(CGSize viewPort, CGSize size);

/// Like `FitToSize`, but each component is rounded up to whole pixels at `scale` pixels per point.
OZM_CXX_EXPORT CGSize FitToPixels(CGSize viewPort, CGSize size, double scale);

} // namespace ozm
