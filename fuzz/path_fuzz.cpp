// Path data: what is written is read as meant by both readers, and written again in the same words.
#include "geometry/path_reader.h"
#include "geometry/path_writer.h"
#include "geometry/transform_reader.h"
#include "require.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace ozm::conform;

namespace {

void TryPathData(std::string_view text, int decimals) {
    const PathData data = ReadPath(text);
    Require(!data.error || *data.error <= text.size());
    Require(data.arcs.first.value_or(0) <= text.size() && data.quadratics.first.value_or(0) <= text.size());
    for (const PathData::PenOffset& place : data.penOffsets) {
        Require(place.offset < text.size() && place.distance > 0);
    }
    DrawsTheSame(data, text, 1e-6);
    std::string written, again;
    WritePath(data.path, decimals, written);
    const PathData read = ReadPath(written);
    Require(!read.error && DrawsTheSame(read, written, 0));
    WritePath(read.path, decimals, again);
    Require(again == written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    TryPathData(text, data[0] % 20 - 4);
    for (const TransformSyntax syntax : {TransformSyntax::Attribute, TransformSyntax::Style}) {
        const auto matrix = ReadTransform(text, syntax, {{3, 4}, 5, 6});
        if (!matrix) continue;
        std::string written;
        WriteTransform(*matrix, 3, 24, written);
        Require(ReadTransform(written, TransformSyntax::Attribute).has_value());
    }
    return 0;
}
