#pragma once

#include <Ozmira/ozmTransform.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

/// The same transform as CoreGraphics' type.
inline CGAffineTransform ToCGAffineTransform(const Transform& t) {
    return CGAffineTransformMake(t.a, t.b, t.c, t.d, t.tx, t.ty);
}

// Not inlined, so that their matrices do not enlarge the frames of the functions that walk recursively over
// elements and clips: stacks may be as small as 512 KB.

/// Applies a transform to the context.
[[gnu::noinline]] inline void concat(const Transform& transform, CGContextRef context) {
    CGContextConcatCTM(context, ToCGAffineTransform(transform));
}

/// Applies the inverse of a transform to the context.
[[gnu::noinline]] inline void concatInverse(const Transform& transform, CGContextRef context) {
    CGContextConcatCTM(context, CGAffineTransformInvert(ToCGAffineTransform(transform)));
}

} // namespace ozm
