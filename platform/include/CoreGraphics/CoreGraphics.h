// A 2-D drawing library with the interface of CoreGraphics: paths, paints, images and bitmap contexts.
//
// Left out of CoreGraphics:
// - colour spaces other than device and calibrated RGB, device gray and the four named in CGColorSpace.h, and
//   all colour matching: components are painted unchanged;
// - bitmap contexts other than those with 8 bits per component, RGB, and alpha or an unused byte: gray, alpha
//   only, 16 bits and floating point;
// - images that are masks, have a decode array, or more than 8 bits per component;
// - transparency layers, shadows, patterns, shadings (CGShading, CGFunction), clipping to a mask, CGLayer;
// - text and fonts, PDF, image files (ImageIO), displays and windows;
// - CGPath with blocks, and boolean operations on paths.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGBase.h>
#include <CoreGraphics/CGBitmapContext.h>
#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGContext.h>
#include <CoreGraphics/CGDataProvider.h>
#include <CoreGraphics/CGGeometry.h>
#include <CoreGraphics/CGGradient.h>
#include <CoreGraphics/CGImage.h>
#include <CoreGraphics/CGPath.h>
