#pragma once

#include <Ozmira/OzmiraColor.h>
#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmRecordMemory.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// A colour, not premultiplied, with components from 0 to 1. Parsed colours are not clamped and may exceed 1.
struct Color {
    double r = 0;
    double g = 0;
    double b = 0;
    double a = 0;

    bool operator==(const Color&) const = default;
};

} // namespace ozm

inline OZMColor::operator ozm::Color() const { return {r, g, b, a}; }

namespace ozm {

/// The shape of the ends of a stroked line.
enum class LineCap : uint32_t { Butt = 0, Round = 1, Square = 2 };
/// The shape of the corners of a stroked line.
enum class LineJoin : uint32_t { Miter = 0, Round = 1, Bevel = 2 };
/// Which winding numbers count as inside a filled path: all but 0, or the odd ones.
enum class WindingRule : uint32_t { NonZero = 0, EvenOdd = 1 };

/// One paint property that an element sets: a type and the payload that the type selects.
struct OZM_CXX_EXPORT StyleProperty {
    /// The property and the member of its payload.
    enum class Type : uint32_t {
        StrokeColor = 0,      ///< `color`; "none" is all zero
        StrokeOpacity = 1,    ///< `number`
        StrokeWidth = 2,      ///< `number`, user units
        StrokeLineCap = 3,    ///< `keyword`, a `LineCap`
        StrokeLineJoin = 4,   ///< `keyword`, a `LineJoin`
        StrokeMiterLimit = 5, ///< `number`
        StrokeDashArray = 6,  ///< `dashArray`; never made by the parser
        StrokeDashOffset = 7, ///< `number`, user units
        FillColor = 8,        ///< `color`; "none" is all zero
        FillURL = 9,          ///< `url`
        FillOpacity = 10,     ///< `number`
        FillRule = 11,        ///< `keyword`, a `WindingRule`
        ClipPathURL = 12,     ///< `url`
        ClipRule = 13,        ///< `keyword`, a `WindingRule`; never read, and reset to 0 by copies and moves
        Opacity = 14,         ///< `number`
    };

    /// A member of the union.
    enum class Payload { Color, Number, Keyword, DashArray, URL, None };
    /// The member that a type selects; `None` for `ClipRule`, whose keyword is never read.
    static Payload PayloadOf(Type type);

    Type type;
    union {
        Color color;
        double number;
        uint32_t keyword;
        std::vector<double> dashArray;
        std::string url; ///< Id of the referenced element, without "#".
    };

    /// Creates a property whose payload is zero or empty.
    explicit StyleProperty(Type ofType) noexcept;
    StyleProperty(const StyleProperty& other);
    /// Moves a list or string out of `other`, which is left with an empty one.
    StyleProperty(StyleProperty&& other) noexcept;
    StyleProperty& operator=(const StyleProperty& other);
    StyleProperty& operator=(StyleProperty&& other) noexcept;
    ~StyleProperty() { DestroyPayload(); }

private:
    void ConstructEmpty() noexcept;
    void ConstructFrom(StyleProperty& other) noexcept;
    void DestroyPayload() noexcept {
        if (type == Type::FillURL || type == Type::ClipPathURL) url.~basic_string();
        if (type == Type::StrokeDashArray) dashArray.~vector();
    }
};

} // namespace ozm

OZM_RECORD(ozm::StyleProperty);

namespace ozm {

/// The properties that one element sets, in the order in which they apply: later ones override earlier ones.
struct Style {
    std::string name; ///< Always empty.
    std::vector<StyleProperty> properties;
};

} // namespace ozm

OZM_RECORD(ozm::Style);
