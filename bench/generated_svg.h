#pragma once

#include <cstddef>
#include <string>

// Drawings of any size, the same ones each time, in a view box of 1,000 by 1,000 units. Their shapes are
// small and of one size, so that the length of all outlines grows with the number of shapes.
namespace bench {

/// One path whose data has at least so many bytes.
std::string PathOfSize(size_t bytes);
/// Groups, each with a path of its own.
std::string FlatGroups(size_t count);
/// Groups one inside the other, each with a path.
std::string NestedGroups(size_t count);
/// As many definitions with ids as references to them, each to another one.
std::string UseReferences(size_t count);
/// As many clip paths as paths, each clipped by another one.
std::string ClippedPaths(size_t count);
/// A dozen large shapes, filled, stroked and with gradients.
std::string LargeShapes();

} // namespace bench
