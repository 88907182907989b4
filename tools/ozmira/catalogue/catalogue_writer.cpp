#include "catalogue/catalogue_writer.h"

#include "base/errors.h"
#include "base/parallel.h"
#include "base/text.h"
#include "catalogue/drawing_size.h"
#include "catalogue/set_names.h"
#include "files/drawing_file.h"
#include "files/input_file.h"
#include "picture/icon_renderer.h"
#include "report/drawing_check.h"
#include "report/finding_text.h"

#include <Ozmira/OZMFitToSize.h>
#include <OzmiraConform/OzmiraConform.h>

#include <algorithm>
#include <set>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> SourcesOf(const CataloguePlan& plan) {
    std::vector<std::string> sources;
    for (const ImageSetPlan& set : plan.sets) {
        sources.push_back(set.source);
        if (!set.darkSource.empty()) sources.push_back(set.darkSource);
    }
    return sources;
}

std::vector<std::string> FoldersOf(const CataloguePlan& plan, const fs::path& catalogue) {
    std::vector<std::string> folders;
    for (const ImageSetPlan& set : plan.sets) {
        if (set.problem.empty()) folders.push_back((catalogue / set.folder).string());
    }
    return folders;
}

/// The text of a drawing in the size that the images are to have.
std::string Sized(const Drawing& drawing, CGSize limits) {
    if (limits.width == 0 && limits.height == 0) return drawing.text;
    const DimensionSize& own = drawing.document->size;
    const CGSize size = FitToSize({own.width.value, own.height.value}, limits);
    return WithSize(drawing.text, *drawing.document, size.width, size.height);
}

} // namespace

CatalogueWriter::CatalogueWriter(const CatalogueSettings& settings, const CataloguePlan& plan,
                                 BatchReport& report)
    : m_settings(settings), m_plan(plan), m_report(report),
      m_files(
          SourcesOf(plan), settings.isDryRun, [this] { EndEarly(); }, FoldersOf(plan, settings.catalogue)) {}

void CatalogueWriter::MakeSets() {
    std::vector<PNGEncoder> encoders(std::clamp<size_t>(m_plan.sets.size(), 1, m_settings.jobs));
    ForEachInParallel(
        m_plan.sets.size(), m_settings.jobs,
        [&](size_t i, size_t worker) {
            std::string remarks;
            std::string problem = Make(m_plan.sets[i], encoders[worker], remarks);
            m_report.Done(i, std::move(problem), std::move(remarks));
        },
        &m_failures.Stop());
}

void CatalogueWriter::DescribeFolders() {
    std::set<fs::path> folders;
    for (const auto& [set, files] : m_made) {
        for (fs::path group = fs::path(set).parent_path(); !group.empty(); group = group.parent_path())
            folders.insert(group);
        folders.insert(fs::path());
    }
    for (const fs::path& folder : folders) {
        try {
            DescribeFolder(folder);
        } catch (const FileError& error) {
            m_report.Problem(error.what());
        }
    }
}

std::string CatalogueWriter::Make(const ImageSetPlan& set, PNGEncoder& encoder,
                                  std::string& remarks) noexcept {
    const std::string* source = &set.source;
    return m_failures.Run(source, [&]() -> std::string {
        if (!set.problem.empty()) throw FileError(set.problem);
        const fs::path folder = m_settings.catalogue / set.folder;
        if (IsForeign(folder)) {
            throw FileError("another program has made " + OnOneLine(folder.string()) +
                            "; remove it, or rename the drawing");
        }
        // No image takes its place before every one is at hand, so that a failure leaves no part of a set.
        StagedSet staged;
        for (const std::string* const path : {&set.source, &set.darkSource}) {
            if (path->empty()) continue;
            source = path;
            conform::Result result = conform::Conform(ReadInput(*source));
            if (result.isRefused) return DescribeRefusal(*source, result.findings);
            const bool isDark = source == &set.darkSource;
            const bool isBlank = AddImages(set, isDark, std::move(result.text), encoder, staged);
            if (isBlank && !m_settings.isQuiet) remarks += DescribeBlank(*source);
        }
        Commit(set, staged);
        return {};
    });
}

bool CatalogueWriter::AddImages(const ImageSetPlan& set, bool isDark, std::string text, PNGEncoder& encoder,
                                StagedSet& staged) {
    const Drawing drawing = ParseDrawingWithElements(std::move(text));
    CheckDrawing(*drawing.document);
    IconRenderer renderer(*drawing.document, kRenderingStateDefault, false, m_settings.timeout);
    const std::string stem = ImageStem(set.name, isDark);
    const auto add = [&](const std::string& name, int scale, const auto& output, OutputKind kind) {
        const std::string path = (m_settings.catalogue / set.folder / name).string();
        staged.files.push_back(m_files.Stage(path, output, kind));
        staged.images.push_back({name, scale, isDark});
    };
    if (m_settings.isVector) {
        renderer.CheckSize(m_settings.size, 1);
        add(DrawingName(stem), 0, BytesOf(Sized(drawing, m_settings.size)), OutputKind::Drawing);
        return false;
    }
    bool isBlank = true;
    m_pictures.Draw(renderer, m_settings.size, kScales, [&](size_t i, const PixelRows& pixels) {
        encoder.Begin(pixels, kScales[i]);
        isBlank = isBlank && encoder.IsBlank();
        add(PictureName(stem, kScales[i]), static_cast<int>(kScales[i]), encoder.Output(),
            OutputKind::Picture);
    });
    return isBlank;
}

void CatalogueWriter::Commit(const ImageSetPlan& set, StagedSet& staged) {
    const std::string path = (m_settings.catalogue / set.folder / kContentsName).string();
    const std::string contents =
        ImageSetContents(staged.images, {m_settings.isTemplate, m_settings.isVector});
    staged.files.push_back(m_files.Stage(path, BytesOf(contents), OutputKind::Data));
    for (StagedFile& file : staged.files) file.Commit();
    std::set<std::string> names{kContentsName};
    for (const ImageEntry& image : staged.images) names.insert(image.fileName);
    const std::lock_guard lock(m_madeMutex);
    m_made.emplace(set.folder, std::move(names));
}

void CatalogueWriter::DescribeFolder(const fs::path& path) {
    const fs::path folder = m_settings.catalogue / path;
    const std::string contents = (folder / kContentsName).string();
    const bool isNamespace = m_settings.groupsAreNamespaces && !path.empty();
    if (!IsForeign(folder)) {
        m_files.Write(contents, BytesOf(FolderContents(isNamespace)), OutputKind::Data);
    } else if (isNamespace && !ProvidesNamespace(ReadContents(folder).value_or(""))) {
        throw FileError(OnOneLine(contents) + " is another program's and makes the group no namespace; "
                                              "turn on \"Provides Namespace\" in Xcode");
    }
}

void CatalogueWriter::EndEarly() noexcept {
    if (!m_settings.isQuiet) {
        m_report.EndEarly("interrupted; " + DescribeOutputs("file", Files(), m_settings.catalogue.string(),
                                                            m_settings.isDryRun));
    }
}

} // namespace ozm::tool
