#include "compare/changed_icons.h"

#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "page/comparison_page.h"
#include "picture/icon_renderer.h"
#include "picture/png_decoder.h"
#include "picture/png_encoder.h"
#include "picture/scaled_pictures.h"
#include "report/batch_failures.h"
#include "report/drawing_check.h"

#include <algorithm>
#include <utility>

namespace ozm::tool {
namespace {

using State = PictureComparison::State;

/// Draws the two sides of changes.
class ChangeDrawer {
public:
    explicit ChangeDrawer(const ComparisonSettings& settings) : m_settings(settings) {}

    PageIcon Describe(const PictureComparison& result, PNGEncoder& encoder) {
        PageIcon icon;
        icon.name = result.name;
        icon.status = NameOf(result.state);
        icon.problem = result.problem;
        constexpr double kMost = 255;
        icon.difference = result.state == State::Changed ? result.difference.mean : kMost;
        if (result.state == State::Failed) return icon;
        icon.columns.resize(2);
        Show(result.oldPath, icon, icon.columns[0], encoder);
        Show(result.newPath, icon, icon.columns[1], encoder);
        return icon;
    }

private:
    /// Fills the column of a side, which is missing if it has no path.
    void Show(const std::string& path, PageIcon& icon, PageColumn& column, PNGEncoder& encoder) {
        if (path.empty()) return;
        try {
            column.pictures = {PictureOf(ReadDrawingOrPNG(path), icon, encoder)};
        } catch (const FileError& error) {
            icon.problem = InputName(path) + ": " + error.what();
        }
    }

    /// The picture of a file as a URL. Sets the icon's size.
    std::string PictureOf(std::string bytes, PageIcon& icon, PNGEncoder& encoder) {
        if (IsPNG(bytes)) {
            const PictureSize size = SizeOfPNG(bytes);
            icon.width = static_cast<double>(size.width);
            icon.height = static_cast<double>(size.height);
            return DataURL("image/png", BytesOf(bytes));
        }
        const Drawing drawing = ParseDrawingWithElements(std::move(bytes));
        CheckDrawing(*drawing.document);
        IconRenderer renderer(*drawing.document, kRenderingStateDefault, false, m_settings.timeout);
        const CGSize size = renderer.FittingSize(m_settings.size, m_settings.scale);
        icon.width = size.width;
        icon.height = size.height;
        std::string url;
        m_pictures.Draw(renderer, m_settings.size, {&m_settings.scale, 1},
                        [&](size_t, const PixelRows& pixels) {
                            encoder.Begin(pixels, m_settings.scale);
                            url = DataURL("image/png", encoder.Encode());
                        });
        return url;
    }

    const ComparisonSettings& m_settings;
    ScaledPictures m_pictures;
};

} // namespace

std::vector<std::string> DescribeChanges(std::span<const PictureComparison> results,
                                         const ComparisonSettings& settings) {
    std::vector<const PictureComparison*> changes;
    for (const PictureComparison& result : results) {
        if (result.state != State::Same) changes.push_back(&result);
    }
    std::vector<std::string> described(changes.size()), problems(changes.size());
    std::vector<PNGEncoder> encoders(std::clamp<size_t>(changes.size(), 1, settings.jobs));
    ChangeDrawer drawer(settings);
    BatchFailures failures;
    ForEachInParallel(changes.size(), settings.jobs, [&](size_t i, size_t worker) {
        problems[i] = failures.Run(&changes[i]->name, [&] {
            described[i] = DescribePageIcon(drawer.Describe(*changes[i], encoders[worker]));
            return std::string();
        });
    });
    for (const std::string& problem : problems) {
        if (!problem.empty()) throw FileError(problem);
    }
    return described;
}

} // namespace ozm::tool
