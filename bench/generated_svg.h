#pragma once

#include <cstddef>
#include <string>

// Generated drawings of any size, the same ones each time, in a view box of 1,000 by 1,000 units. Except in
// LargeShapes, all shapes are equally small, so that the work grows with their number.
namespace bench {

/// One path with at least `bytes` bytes of path data.
std::string PathOfSize(size_t bytes);
/// `count` groups side by side, each containing a path.
std::string FlatGroups(size_t count);
/// `count` nested groups, each containing a path.
std::string NestedGroups(size_t count);
/// `count` paths with ids in `defs`, and `count` uses, each of a different path.
std::string UseReferences(size_t count);
/// `count` clip paths, and `count` paths, each clipped by a different one.
std::string ClippedPaths(size_t count);
/// A dozen large shapes: gradient fills, translucent fills and strokes.
std::string LargeShapes();

} // namespace bench
