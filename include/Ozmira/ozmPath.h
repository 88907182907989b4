#pragma once

#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace ozm {

/// A cubic segment; it starts where the segment before it ended.
struct BezierCurve {
    TVec2<double> end;
    TVec2<double> control1;
    TVec2<double> control2;

    bool operator==(const BezierCurve&) const = default;
};

} // namespace ozm

OZM_RECORD(ozm::BezierCurve);

namespace ozm {

/// One step of a path in absolute coordinates: `type` and the payload that it selects.
struct PathCommand {
    enum class Type : uint32_t {
        MoveTo = 0,           ///< `point`
        ClosePath = 1,        ///< No payload.
        LineTo = 2,           ///< `points`
        HorizontalLineTo = 3, ///< No payload; never made by the parser, draws nothing.
        VerticalLineTo = 4,   ///< No payload; never made by the parser, draws nothing.
        CurveTo = 5,          ///< `curves`
    };

    Type type;
    union {
        TVec2<double> point;               ///< Where to move.
        std::vector<TVec2<double>> points; ///< End points of a run of straight segments, possibly none.
        std::vector<BezierCurve> curves;   ///< A run of cubic segments, possibly none.
    };

    /// A command with the point (0, 0) or an empty list.
    explicit PathCommand(Type ofType) : type(ofType) { ConstructEmpty(); }
    /// A `LineTo`.
    explicit PathCommand(std::vector<TVec2<double>>&& ofPoints) noexcept
        : type(Type::LineTo), points(std::move(ofPoints)) {}
    /// A `CurveTo`.
    explicit PathCommand(std::vector<BezierCurve>&& ofCurves) noexcept
        : type(Type::CurveTo), curves(std::move(ofCurves)) {}
    PathCommand(const PathCommand& other);
    /// Takes the list over; `other` keeps its type and an empty list.
    PathCommand(PathCommand&& other) noexcept : type(other.type) { ConstructFrom(other); }
    /// Ends the program when memory for the copy of a list runs out.
    PathCommand& operator=(const PathCommand& other) noexcept;
    PathCommand& operator=(PathCommand&& other) noexcept;
    ~PathCommand() { DestroyPayload(); }

    /// Same type and equal payload.
    friend bool operator==(const PathCommand& a, const PathCommand& b);

private:
    void ConstructEmpty() noexcept;
    void ConstructFrom(PathCommand& other) noexcept;
    void DestroyPayload() noexcept;
};

} // namespace ozm

OZM_RECORD(ozm::PathCommand);

namespace ozm {

/// Path commands in drawing order.
struct Path {
    std::vector<PathCommand> commands;

    bool operator==(const Path&) const = default;
};

// Inline, because lists of commands are built, grown and destroyed by the thousand.

inline void PathCommand::ConstructEmpty() noexcept {
    switch (type) {
    case Type::LineTo: new (&points) std::vector<TVec2<double>>(); break;
    case Type::CurveTo: new (&curves) std::vector<BezierCurve>(); break;
    default: new (&point) TVec2<double>{0, 0}; break;
    }
}

inline void PathCommand::ConstructFrom(PathCommand& other) noexcept {
    switch (type) {
    case Type::LineTo: new (&points) std::vector<TVec2<double>>(std::move(other.points)); break;
    case Type::CurveTo: new (&curves) std::vector<BezierCurve>(std::move(other.curves)); break;
    default: new (&point) TVec2<double>(other.point); break;
    }
}

inline void PathCommand::DestroyPayload() noexcept {
    // Lines and curves take turns, so that a branch between them is often mispredicted. Both lists end alike,
    // and one branch, which compilers see, tells whether there is one.
    constexpr uint32_t kLists =
        (1U << static_cast<uint32_t>(Type::LineTo)) | (1U << static_cast<uint32_t>(Type::CurveTo));
    if (type > Type::CurveTo || (kLists >> static_cast<uint32_t>(type) & 1) == 0) return;
    if (type == Type::LineTo) {
        points.~vector();
    } else {
        curves.~vector();
    }
}

} // namespace ozm
