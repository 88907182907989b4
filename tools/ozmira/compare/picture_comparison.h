#pragma once

#include "compare/picture_pairs.h"
#include "picture/decoded_picture.h"
#include "picture/picture_difference.h"
#include "report/batch_report.h"

#include <CoreGraphics/CoreGraphics.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// How drawings are drawn before they are compared.
struct ComparisonSettings {
    CGSize size{0, 0};  ///< The largest size in points; 0 is no limit.
    double scale = 1;   ///< Pixels per point.
    double timeout = 0; ///< Seconds of processor time for a picture; 0 is no limit.
    unsigned jobs = 1;  ///< Number of threads.
};

/// What became of a picture.
struct PictureComparison {
    enum class State { Same, Changed, Resized, New, Gone, Failed };

    std::string name, oldPath, newPath; ///< As in the pair.
    State state = State::Same;
    PictureSize oldSize, newSize; ///< Of a changed or resized picture.
    PictureDifference difference; ///< Of a changed picture.
    std::string problem;          ///< Why the comparison failed.
};

/// A word for a state, such as "changed".
std::string_view NameOf(PictureComparison::State state);

/// Compares pairs of pictures on several threads; drawings are drawn first. Each is reported to `report`,
/// those that fail with a problem. The results are in the order of the pairs.
std::vector<PictureComparison> ComparePictures(std::span<const PicturePair> pairs,
                                               const ComparisonSettings& settings, BatchReport& report);

} // namespace ozm::tool
