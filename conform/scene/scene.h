// A drawing with everything resolved: what is painted, in which order.
#pragma once

#include "geometry/path.h"
#include "geometry/shapes.h"
#include "geometry/stroke.h"
#include "source/document.h"
#include "style/color.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <variant>
#include <vector>

namespace ozm::conform {

struct GradientStop {
    double offset = 0; ///< 0...1, in ascending order.
    Color color;

    bool operator==(const GradientStop&) const = default;
};

enum class GradientSpread : uint8_t { Pad, Reflect, Repeat };

/// A gradient in a coordinate system of its own.
struct Gradient {
    bool isRadial = false;
    Matrix matrix;       ///< From the gradient's coordinates to those of the drawing.
    Point start, end;    ///< Linear.
    Point center, focus; ///< Radial.
    double radius = 0, focalRadius = 0;
    GradientSpread spread = GradientSpread::Pad;
    std::vector<GradientStop> stops;
};

/// What an area is painted with.
struct Paint {
    enum class Kind : uint8_t { None, Color, Gradient };
    Kind kind = Kind::None;
    Color color;             ///< Of a gradient only the alpha counts, on top of that of its stops.
    bool isTintable = false; ///< The default colour, which an application may replace.
    const Gradient* gradient = nullptr;

    explicit operator bool() const { return kind != Kind::None; }
    static Paint Of(const Color& color) { return {Kind::Color, color, false, nullptr}; }
};

/// An area that everything under it is cut to, in the coordinates of the drawing.
struct Clip {
    Path path; ///< Under the nonzero rule.
    const Clip* outer = nullptr;
    bool isRectangle = false; ///< An upright one.
};

/// The basic shape that a path was made of.
using Primitive = std::variant<std::monostate, Rectangle, Ellipse>;

/// One path with its paints.
struct Shape {
    Path path;
    Primitive primitive;
    Matrix matrix; ///< From the path's coordinates to those of the drawing.
    FillRule fillRule = FillRule::NonZero;
    Paint fill, stroke;
    Stroke pen;                 ///< In the path's coordinates.
    std::vector<double> dashes; ///< Painted and unpainted lengths in turn; empty: a solid line.
    double dashPhase = 0;
    double opacity = 1; ///< Of fill and stroke each.
    bool isStrokeFirst = false;
    const Clip* clip = nullptr;
    const Node* origin = nullptr;
};

/// True for one closed subpath that is an upright rectangle.
bool IsUprightRectangle(const Path& path);

struct Group;
using Item = std::variant<Shape, std::unique_ptr<Group>>;

/// A part of the picture in which a mask lets the same share through.
struct MaskLevel {
    Path area; ///< Under the nonzero rule.
    double share = 1;
};

/// Items that are painted together and then made translucent as one.
struct Group {
    double opacity = 1;
    bool isSeen = false; ///< Ozmira draws its items too, and multiplies the opacity into each.
    const Node* origin = nullptr;
    std::vector<MaskLevel> mask; ///< Outside of these parts nothing is seen; empty: everything is.
    std::vector<Item> items;
};

struct Scene {
    Box viewBox; ///< What is shown, in the drawing's coordinates.
    double width = 0, height = 0;
    bool hasSize = false; ///< Width and height are to be written.
    Group root;
    std::deque<Clip> clips;
    std::deque<Gradient> gradients;

    /// The greatest distance that nobody sees.
    double Tolerance() const;
};

} // namespace ozm::conform
