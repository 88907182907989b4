// What every header of the drawing library needs: the floating-point type and the linkage macros.
#pragma once

#include <CoreFoundation/CFBase.h>
#include <float.h>

// GNUstep's Foundation uses the same guard, so either header may be included first.
#ifndef CGFLOAT_DEFINED
typedef double CGFloat;
#define CGFLOAT_DEFINED 1
#define CGFLOAT_MIN DBL_MIN
#define CGFLOAT_MAX DBL_MAX
#endif
#ifndef CGFLOAT_IS_DOUBLE
#define CGFLOAT_IS_DOUBLE 1
#endif
#ifndef CGFLOAT_EPSILON
#define CGFLOAT_EPSILON DBL_EPSILON
#endif

#define CG_EXTERN CF_EXPORT
#define CG_INLINE CF_INLINE
#define cg_nullable
