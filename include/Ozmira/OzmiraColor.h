#pragma once

#ifdef __cplusplus
namespace ozm {
struct Color;
}
#endif

/// A colour, not premultiplied: red, green, blue and alpha as fractions of 1. The same in C, Objective-C and
/// C++.
typedef struct OZMColor {
    double r, g, b, a;

#ifdef __cplusplus
    /// The core's colour; defined in <Ozmira/ozmStyle.h>.
    operator ozm::Color() const;
#endif
} OZMColor;
