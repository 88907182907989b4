#pragma once

#include "base/tool_limits.h"
#include "catalogue/catalogue_folder.h"
#include "catalogue/catalogue_plan.h"
#include "catalogue/contents_json.h"
#include "files/output_files.h"
#include "picture/png_encoder.h"
#include "picture/scaled_pictures.h"
#include "report/batch_failures.h"
#include "report/batch_report.h"
#include "report/output_summary.h"

#include <CoreGraphics/CoreGraphics.h>

#include <cstddef>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace ozm::tool {

struct CatalogueSettings {
    std::filesystem::path catalogue;
    CGSize size{0, 0};                ///< The largest size of an image in points; 0 is no limit.
    double timeout = kDefaultTimeout; ///< Seconds of processor time for a picture; 0 is no limit.
    bool isTemplate = false;          ///< Applications tint the images.
    bool isVector = false;            ///< Write drawings in place of pictures.
    bool groupsAreNamespaces = false;
    unsigned jobs = 1; ///< Number of threads.
    bool isDryRun = false, isQuiet = false;
};

/// Writes the image sets of a plan, which appear whole or not at all. Borrows all that it is given.
class CatalogueWriter {
public:
    CatalogueWriter(const CatalogueSettings& settings, const CataloguePlan& plan, BatchReport& report);

    /// Makes the sets on several threads. Reports each to the batch report.
    void MakeSets();
    /// Describes the catalogue and the groups of all sets that were made. Reports each problem.
    void DescribeFolders();

    /// The sets that were, or in a dry run would be, made.
    const MadeSets& Made() const { return m_made; }
    OutputCounts Files() const { return {m_files.WrittenCount(), m_files.UnchangedCount()}; }
    /// Number of sets that were not made because no file could be written any more.
    size_t UnreachedCount() const { return m_report.Unfinished() + m_failures.DroppedCount(); }

private:
    /// The images of a set, whose files are written under temporary names.
    struct StagedSet {
        std::vector<ImageEntry> images;
        std::vector<StagedFile> files;
    };

    /// Makes a set. Returns what went wrong; empty if nothing did.
    std::string Make(const ImageSetPlan& set, PNGEncoder& encoder, std::string& remarks) noexcept;
    /// Adds the images of an appearance, drawn from a text. Returns true if they are blank pictures.
    bool AddImages(const ImageSetPlan& set, bool isDark, std::string text, PNGEncoder& encoder,
                   StagedSet& staged);
    /// Adds the description of a set, and moves all its files to their places.
    void Commit(const ImageSetPlan& set, StagedSet& staged);
    /// Describes a group, or the catalogue itself, whose path below the catalogue is empty. A description
    /// that another program has written stays.
    void DescribeFolder(const std::filesystem::path& path);
    /// A signal is about to end the process.
    void EndEarly() noexcept;

    const CatalogueSettings& m_settings;
    const CataloguePlan& m_plan;
    BatchReport& m_report;
    BatchFailures m_failures;
    ScaledPictures m_pictures;
    std::mutex m_madeMutex;
    MadeSets m_made;
    OutputFiles m_files;
};

} // namespace ozm::tool
