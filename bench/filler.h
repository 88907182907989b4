#pragma once

#include <Ozmira/ozmPath.h>

#include <memory>
#include <vector>

namespace bench {

/// The paths of one drawing in pixels, y pointing down.
using Outlines = std::vector<ozm::Path>;

/// The paths of one drawing, converted to a library's own type.
class FillSubject {
public:
    virtual ~FillSubject() = default;
    /// Clears `size` * `size` pixels of four bytes and fills each path with opaque black: anti-aliased, by
    /// the nonzero rule, with the library's default tolerance for curves.
    virtual void Fill(unsigned size, void* pixels) const = 0;
};

/// A library that fills paths. Each has a file under fillers/.
struct Filler {
    const char* name;
    /// Converts paths to the library's own type.
    std::unique_ptr<FillSubject> (*convert)(const Outlines& outlines);
    /// Index of the alpha byte within a pixel.
    unsigned alphaByte;
};

extern const Filler kOzmiraFiller;
#ifdef OZMIRA_BENCH_CAIRO
extern const Filler kCairoFiller;
#endif
#ifdef OZMIRA_BENCH_AGG
/// Anti-Grain Geometry.
extern const Filler kAGGFiller;
#endif
#ifdef OZMIRA_BENCH_QT
/// Qt's raster painter.
extern const Filler kQtFiller;
#endif

/// The fillers of this build, Ozmira first.
inline std::vector<const Filler*> Fillers() {
    return {
        &kOzmiraFiller,
#ifdef OZMIRA_BENCH_CAIRO
        &kCairoFiller,
#endif
#ifdef OZMIRA_BENCH_AGG
        &kAGGFiller,
#endif
#ifdef OZMIRA_BENCH_QT
        &kQtFiller,
#endif
    };
}

/// Passes the segments of a path one by one to `sink`, which has `MoveTo`, `LineTo`, `CurveTo` and `Close`.
template <typename Sink>
void SendSegments(const ozm::Path& path, Sink&& sink) {
    using Type = ozm::PathCommand::Type;
    for (const ozm::PathCommand& command : path.commands) {
        if (command.type == Type::MoveTo) sink.MoveTo(command.point);
        if (command.type == Type::ClosePath) sink.Close();
        if (command.type == Type::LineTo) {
            for (const auto& point : command.points) sink.LineTo(point);
        }
        if (command.type == Type::CurveTo) {
            for (const auto& curve : command.curves) sink.CurveTo(curve);
        }
    }
}

} // namespace bench
