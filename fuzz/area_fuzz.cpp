// Outlines, dashes and areas of any path: they end, are finite, and mean the same under both rules.
#include "geometry/area.h"
#include "geometry/dash.h"
#include "geometry/path_reader.h"
#include "geometry/stroke.h"
#include "geometry/winding.h"
#include "require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

using namespace ozm::conform;

namespace {

bool HasFinitePoints(const Path& path) {
    return std::all_of(path.Points().begin(), path.Points().end(), [](Point p) { return IsFinite(p); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3 || size > 2000) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 3, size - 3);
    const size_t half = text.size() / 2;
    const Path first = ReadPath(text.substr(0, half)).path, second = ReadPath(text.substr(half)).path;
    const Stroke stroke{data[0] / 16., static_cast<LineCap>(data[1] % 3),
                        static_cast<LineJoin>(data[1] / 3 % 3), 1. + data[1] / 32.};
    const Path outline = OutlineOf(first, stroke, 0.01);
    Require(!HasFinitePoints(first) || BoxOf(first).Width() > 1e30 || BoxOf(first).Height() > 1e30 ||
            HasFinitePoints(outline));
    const double lengths[] = {data[2] / 8., data[1] / 8., 1};
    const std::optional<Path> dashes = DashesOf(first, lengths, data[0] - 99., 1000);
    if (dashes) BoxOf(*dashes);
    const Area a{first, data[1] & 1 ? FillRule::EvenOdd : FillRule::NonZero}, b{second};
    for (const auto operation :
         {AreaOperation::Intersection, AreaOperation::Difference, AreaOperation::Union}) {
        Combine(operation, a, b, 0.01);
    }
    Overlap(a, b, 0.01);
    Require(HasFinitePoints(Rewound(a, 0.01)));
    RulesAgree(first, 0.01);
    return 0;
}
