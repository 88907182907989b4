// The limits of the tool, with the reasons for their values.
#pragma once

#include <Ozmira/ozmLimits.h>

#include <cstddef>
#include <cstdint>

namespace ozm::tool {

/// Maximum size of an input file in bytes. Parsing can turn one byte of text into a hundred bytes of
/// document, so this bounds memory. It is far above the size of any drawing that people view.
inline constexpr size_t kMaximumFileSize = size_t{64} << 20;

/// Maximum number of tags in a file. A tag of four characters becomes an element of several hundred bytes,
/// the worst ratio that a file can reach.
inline constexpr size_t kMaximumTags = 4'000'000;

/// Maximum number of elements drawn in one picture, counting an element once for every reference that reaches
/// it. Without this limit, a few levels of nested `use` elements could take years to draw.
inline constexpr uint32_t kMaximumDrawnElements = 10'000'000;

/// Maximum number of path segments drawn in one picture, counted the same way. A file within the size limit
/// contains fewer, so only references can exceed this limit.
inline constexpr uint32_t kMaximumDrawnSegments = 100'000'000;

/// Maximum depth of drawing: each group, `use` and clipped element is one level. Drawing recurses once per
/// level whether elements nest in the file or through references, so the limit of nesting applies to both.
inline constexpr uint32_t kMaximumDrawingDepth = kMaximumNestingDepth;

/// Maximum width and height of a picture in pixels.
inline constexpr double kMaximumSide = 32'767;

/// Maximum number of pixels in a picture: a bitmap of 400 MB. Three times that is in use while the file is
/// written.
inline constexpr double kMaximumPixels = 100e6;

/// Pictures of more pixels than this are drawn one at a time, so that memory use does not grow with the
/// number of threads.
inline constexpr double kLargePicturePixels = 16e6;

/// Range of pixels per point.
inline constexpr double kMinimumScale = 0.01;
inline constexpr double kMaximumScale = 100;

/// Default limit of the processor time for drawing one picture, in seconds. Drawings that people view take
/// milliseconds.
inline constexpr double kDefaultTimeout = 30;

/// Maximum time limit in seconds: one day.
inline constexpr double kMaximumTimeout = 86'400;

/// Maximum number of threads.
inline constexpr unsigned kMaximumJobs = 256;

} // namespace ozm::tool
