// Colour spaces. Components range over 0...1; alpha is not one of them.
//
// There is no colour matching: the components of every space are painted unchanged.
#pragma once

#include <CoreFoundation/CFString.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGColorSpace* CGColorSpaceRef;

CF_ENUM(int32_t, CGColorRenderingIntent){kCGRenderingIntentDefault, kCGRenderingIntentAbsoluteColorimetric,
                                         kCGRenderingIntentRelativeColorimetric, kCGRenderingIntentPerceptual,
                                         kCGRenderingIntentSaturation};

CF_ENUM(int32_t, CGColorSpaceModel){
    kCGColorSpaceModelUnknown = -1, kCGColorSpaceModelMonochrome, kCGColorSpaceModelRGB,
    kCGColorSpaceModelCMYK,         kCGColorSpaceModelLab,        kCGColorSpaceModelDeviceN,
    kCGColorSpaceModelIndexed,      kCGColorSpaceModelPattern,    kCGColorSpaceModelXYZ};

CF_EXTERN_C_BEGIN

extern const CFStringRef kCGColorSpaceSRGB;
extern const CFStringRef kCGColorSpaceGenericRGB;
extern const CFStringRef kCGColorSpaceGenericGray;
extern const CFStringRef kCGColorSpaceGenericGrayGamma2_2;

/// Type id of colour spaces.
CFTypeID CGColorSpaceGetTypeID(void);
/// The device RGB space: the same object on every call. The caller owns a reference.
CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
/// The device gray space: the same object on every call. The caller owns a reference.
CGColorSpaceRef CGColorSpaceCreateDeviceGray(void);
/// The space with one of the names above; NULL for any other name. The caller owns a reference.
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
/// A new RGB space, distinct from the device's. White point, black point (may be NULL), gamma (3 numbers, may
/// be NULL) and matrix (9 numbers, may be NULL) are accepted but do not affect painting. NULL if `whitePoint`
/// is NULL.
CGColorSpaceRef CGColorSpaceCreateCalibratedRGB(const CGFloat whitePoint[3], const CGFloat blackPoint[3],
                                                const CGFloat gamma[3], const CGFloat matrix[9]);
/// Adds a reference and returns the argument, which may be NULL.
CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space);
/// Releases a reference. NULL is ignored.
void CGColorSpaceRelease(CGColorSpaceRef space);
/// Number of components without alpha: 1 or 3; 0 for NULL.
size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space);
/// Monochrome or RGB; unknown for NULL.
CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space);
/// The name the space was created with, borrowed; NULL for device and calibrated spaces.
CFStringRef CGColorSpaceGetName(CGColorSpaceRef space);
/// Like CGColorSpaceGetName, but the caller owns a reference.
CFStringRef CGColorSpaceCopyName(CGColorSpaceRef space);

CF_EXTERN_C_END
