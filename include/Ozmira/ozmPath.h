#pragma once

#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace ozm {

/// A cubic Bézier segment, which starts where the previous segment ended.
struct BezierCurve {
    TVec2<double> end;
    TVec2<double> control1;
    TVec2<double> control2;

    bool operator==(const BezierCurve&) const = default;
};

} // namespace ozm

OZM_RECORD(ozm::BezierCurve);

namespace ozm {

/// One command of a path, in absolute coordinates: a type and the payload that the type selects.
struct OZM_CXX_EXPORT PathCommand {
    /// The type of a command and the member of its payload.
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
        TVec2<double> point;               ///< The new current point.
        std::vector<TVec2<double>> points; ///< End points of a run of straight segments, possibly none.
        std::vector<BezierCurve> curves;   ///< A run of cubic segments, possibly none.
    };

    /// Creates a command with the point (0, 0) or an empty list.
    explicit PathCommand(Type ofType) : type(ofType) { ConstructEmpty(); }
    /// Creates a `LineTo`.
    explicit PathCommand(std::vector<TVec2<double>>&& ofPoints) noexcept
        : type(Type::LineTo), points(std::move(ofPoints)) {}
    /// Creates a `CurveTo`.
    explicit PathCommand(std::vector<BezierCurve>&& ofCurves) noexcept
        : type(Type::CurveTo), curves(std::move(ofCurves)) {}
    PathCommand(const PathCommand& other);
    /// Moves the list out of `other`, which keeps its type and an empty list.
    PathCommand(PathCommand&& other) noexcept : type(other.type) { ConstructFrom(other); }
    /// Terminates the program if there is no memory for the copy of a list.
    PathCommand& operator=(const PathCommand& other) noexcept;
    PathCommand& operator=(PathCommand&& other) noexcept;
    ~PathCommand() { DestroyPayload(); }

    /// True for the same type with an equal payload.
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

// Inline, because commands are created, moved and destroyed by the thousand.

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
    // Lines and curves alternate, so a branch between them would often be mispredicted. One branch tests
    // whether there is a list at all; compilers merge the two destructors below, which are the same code.
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
