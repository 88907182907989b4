#pragma once

#include <Ozmira/ozmTransform.h>

#include <CoreGraphics/CoreGraphics.h>

namespace ozm {

/// The same transform as CoreGraphics' type.
inline CGAffineTransform ToCGAffineTransform(const Transform& t) {
    return CGAffineTransformMake(t.a, t.b, t.c, t.d, t.tx, t.ty);
}

} // namespace ozm
