#pragma once

#include <Ozmira/ozmPath.h>

#include <memory>
#include <vector>

namespace bench {

/// The paths of one drawing, in pixels, row 0 the top.
using Outlines = std::vector<ozm::Path>;

/// Paths in a library's own form.
class FillSubject {
public:
    virtual ~FillSubject() = default;
    /// Clears `size` * `size` pixels of four bytes and fills each path with opaque black: anti-aliased,
    /// non-zero rule, the library's own tolerance for curves.
    virtual void Fill(unsigned size, void* pixels) const = 0;
};

/// One library that fills paths: one file under fillers/.
struct Filler {
    const char* name;
    /// Takes paths over into the library's own form.
    std::unique_ptr<FillSubject> (*convert)(const Outlines& outlines);
    /// Which of a pixel's four bytes is its alpha.
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
    };
}

/// Gives the segments of a path one by one to `sink`, which has `MoveTo`, `LineTo`, `CurveTo` and `Close`.
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
