#include "compare/picture_comparison.h"

#include "base/errors.h"
#include "base/parallel.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "picture/decoded_picture.h"
#include "picture/icon_renderer.h"
#include "picture/png_decoder.h"
#include "picture/scaled_pictures.h"
#include "report/batch_failures.h"
#include "report/drawing_check.h"

#include <utility>
#include <variant>

namespace ozm::tool {
namespace {

using Picture = std::variant<DecodedPicture, Bitmap>;

PixelRows RowsOf(const Picture& picture) {
    if (const Bitmap* const drawn = std::get_if<Bitmap>(&picture)) return drawn->Pixels();
    return std::get<DecodedPicture>(picture).Rows();
}

/// The picture of a file: a PNG file's own, or the one of a drawing. Throws `FileError`.
Picture PictureOf(std::string bytes, const ComparisonSettings& settings, ScaledPictures::Turn& turn) {
    if (IsPNG(bytes)) {
        turn.Expect(SizeOfPNG(bytes).PixelCount());
        return DecodePNG(bytes);
    }
    const Drawing drawing = ParseDrawingWithElements(std::move(bytes));
    CheckDrawing(*drawing.document);
    IconRenderer renderer(*drawing.document, kRenderingStateDefault, false, settings.timeout);
    turn.Expect(renderer.CheckSize(settings.size, settings.scale));
    return renderer.Draw(settings.size, settings.scale);
}

/// Compares two files. `path` is set to the one that is being read, of which an exception tells.
void CompareFiles(const PicturePair& pair, const ComparisonSettings& settings, ScaledPictures& pictures,
                  const std::string*& path, PictureComparison& result) {
    path = &pair.oldPath;
    std::string oldBytes = ReadDrawingOrPNG(pair.oldPath);
    path = &pair.newPath;
    std::string newBytes = ReadDrawingOrPNG(pair.newPath);
    if (oldBytes == newBytes) return;
    ScaledPictures::Turn turn(pictures);
    path = &pair.oldPath;
    const Picture before = PictureOf(std::move(oldBytes), settings, turn);
    path = &pair.newPath;
    const Picture after = PictureOf(std::move(newBytes), settings, turn);
    const PixelRows oldRows = RowsOf(before), newRows = RowsOf(after);
    result.oldSize = {oldRows.width, oldRows.height};
    result.newSize = {newRows.width, newRows.height};
    if (result.oldSize != result.newSize) {
        result.state = PictureComparison::State::Resized;
        return;
    }
    result.difference = ComparePixels(oldRows, newRows);
    if (result.difference.pixelCount > 0) result.state = PictureComparison::State::Changed;
}

void Compare(const PicturePair& pair, const ComparisonSettings& settings, ScaledPictures& pictures,
             const std::string*& path, PictureComparison& result) {
    result.name = pair.name;
    result.oldPath = pair.oldPath;
    result.newPath = pair.newPath;
    if (!pair.problem.empty()) throw FileError(pair.problem);
    if (!pair.oldPath.empty() && !pair.newPath.empty()) {
        CompareFiles(pair, settings, pictures, path, result);
    } else {
        result.state = pair.oldPath.empty() ? PictureComparison::State::New : PictureComparison::State::Gone;
    }
}

} // namespace

std::string_view NameOf(PictureComparison::State state) {
    using State = PictureComparison::State;
    switch (state) {
    case State::Same: return "same";
    case State::Changed: return "changed";
    case State::Resized: return "resized";
    case State::New: return "new";
    case State::Gone: return "gone";
    case State::Failed: return "failed";
    }
    return {};
}

std::vector<PictureComparison> ComparePictures(std::span<const PicturePair> pairs,
                                               const ComparisonSettings& settings, BatchReport& report) {
    std::vector<PictureComparison> results(pairs.size());
    ScaledPictures pictures;
    BatchFailures failures;
    ForEachInParallel(pairs.size(), settings.jobs, [&](size_t i, size_t) {
        PictureComparison& result = results[i];
        const std::string* path = &pairs[i].name;
        std::string problem = failures.Run(path, [&] {
            Compare(pairs[i], settings, pictures, path, result);
            return std::string();
        });
        if (!problem.empty()) {
            result.state = PictureComparison::State::Failed;
            result.problem = failures.Run(path, [&] { return problem; });
        }
        report.Done(i, std::move(problem));
    });
    return results;
}

} // namespace ozm::tool
