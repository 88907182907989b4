// Every limit that the tool sets, with the reason for its value.
#pragma once

#include <Ozmira/ozmLimits.h>

#include <cstddef>
#include <cstdint>

namespace ozm::tool {

/// Largest file that is read, in bytes. Parsing can make a hundred bytes out of one byte of text, so this
/// bounds memory; it is far above any drawing that people view.
inline constexpr size_t kMaximumFileSize = size_t{64} << 20;

/// Most tags in a file. A tag of four characters becomes an element of several hundred bytes, the worst ratio
/// that a file can reach.
inline constexpr size_t kMaximumTags = 4'000'000;

/// Most elements that one picture draws, counting an element again for every reference through which it is
/// reached: a handful of nested `use` elements would otherwise draw for years.
inline constexpr uint32_t kMaximumDrawnElements = 10'000'000;

/// Most path segments that one picture draws, counted likewise. A file within the size limit holds fewer, so
/// only references can go beyond.
inline constexpr uint32_t kMaximumDrawnSegments = 100'000'000;

/// Deepest chain of elements while drawing, each group, `use` and clipped element being a level. Drawing
/// recurses per level whether elements nest in the file or through references, so both have the same limit.
inline constexpr uint32_t kMaximumDrawingDepth = kMaximumNestingDepth;

/// Longest side of a picture, in pixels.
inline constexpr double kMaximumSide = 32'767;

/// Most pixels in a picture: a bitmap of 400 MB, three times which is in use while the file is written.
inline constexpr double kMaximumPixels = 100e6;

/// Pictures of more pixels than this are drawn one at a time, however many threads there are, so that memory
/// does not grow with their number.
inline constexpr double kLargePicturePixels = 16e6;

/// Range of pixels per point.
inline constexpr double kMinimumScale = 0.01;
inline constexpr double kMaximumScale = 100;

/// Seconds of processor time that drawing one picture may take unless an option says otherwise: far more than
/// drawings that people view, which take milliseconds.
inline constexpr double kDefaultTimeout = 30;

/// Longest time limit, in seconds: a day.
inline constexpr double kMaximumTimeout = 86'400;

/// Most threads.
inline constexpr unsigned kMaximumJobs = 256;

} // namespace ozm::tool
