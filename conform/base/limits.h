// Every limit of conforming, with the reason for its value.
#pragma once

#include <Ozmira/ozmLimits.h>

#include <cstddef>
#include <cstdint>

namespace ozm::conform {

/// Deepest nesting of elements in a file: as deep as Ozmira reads.
inline constexpr uint32_t kMaximumDepth = kMaximumNestingDepth;

/// Deepest nesting while references are followed. The walk recurses once per level, with frames of a few
/// hundred bytes.
inline constexpr uint32_t kMaximumWalkDepth = kMaximumNestingDepth;

/// Deepest nesting in which markers are drawn. Markers on the shapes of markers multiply with every level.
inline constexpr uint32_t kMaximumMarkerDepth = 64;

/// Farthest from 0 that a coordinate may lie in what is written. Readers with numbers of single precision
/// take a little more, and still have to multiply it.
inline constexpr double kLargestCoordinate = 1e30;

/// Most elements visited, each counted for every reference through which it is reached. Real drawings stay
/// below 50,000; a dozen nested references can ask for billions.
inline constexpr uint32_t kMaximumVisits = 200'000;

/// Most path segments read, counted likewise.
inline constexpr size_t kMaximumSegments = 5'000'000;

/// Most shapes of a group or a mask whose areas are cut from each other, most path segments of them, and most
/// masks applied. Each pair of areas may have to be combined, which takes a fraction of a millisecond.
inline constexpr size_t kMaximumAreas = 150;
inline constexpr size_t kMaximumAreaSegments = 20'000;
inline constexpr uint32_t kMaximumMasks = 1'000;

/// Most shares that a mask lets through, each of which repeats what is masked.
inline constexpr size_t kMaximumMaskLevels = 32;

/// Most gradients or patterns that take what they lack from each other.
inline constexpr size_t kMaximumTemplates = 64;

/// Most tiles of a pattern in one shape. A hatching over a large area has a few hundred; each tile repeats
/// the pattern's shapes.
inline constexpr double kMaximumTiles = 1'000;

/// Most dashes of one stroke.
inline constexpr size_t kMaximumDashes = 20'000;

/// Most bytes written: the same as the largest file that the tool reads.
inline constexpr size_t kMaximumOutput = size_t{64} << 20;

/// Most repetitions of a gradient with a `spreadMethod`.
inline constexpr int kMaximumRepetitions = 200;

/// Most declarations that style sheets may hold, and most selectors tried, so that a sheet of many rules over
/// many elements ends in time.
inline constexpr size_t kMaximumSelectors = 20'000;
inline constexpr uint64_t kMaximumSelectorTests = 50'000'000;

/// Deepest nesting of custom properties in each other, most references to them in one value, and most bytes
/// that it may come to. All values of a drawing may cost so much together, in bytes written and in elements
/// searched for a property: about a second.
inline constexpr int kMaximumVariableDepth = 16;
inline constexpr int kMaximumVariables = 1'000;
inline constexpr size_t kMaximumVariableText = 16'384;
inline constexpr uint64_t kMaximumVariableWork = 100'000'000;

} // namespace ozm::conform
