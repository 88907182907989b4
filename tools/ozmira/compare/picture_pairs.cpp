#include "compare/picture_pairs.h"

#include "base/errors.h"
#include "base/text.h"
#include "files/output_plan.h"

#include <filesystem>
#include <map>
#include <utility>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) throw UsageError("\"" + OnOneLine(path) + "\" does not exist; check the name");
    return fs::is_directory(status);
}

} // namespace

std::vector<PicturePair> PairPictures(const std::string& oldPath, const std::string& newPath) {
    const bool isFolder = IsFolder(oldPath);
    if (isFolder != IsFolder(newPath)) throw UsageError("name two folders, or two files");
    if (!isFolder) return {{newPath, oldPath, newPath, {}}};
    std::map<std::string, PicturePair> pairs; // by name
    for (const auto& [root, path] :
         {std::pair(&oldPath, &PicturePair::oldPath), std::pair(&newPath, &PicturePair::newPath)}) {
        for (Source& source : ListFolder(*root, FileKind::PictureOrDrawing)) {
            const bool isListed = source.problem.empty();
            const std::string name =
                isListed ? fs::path(source.path).lexically_relative(*root).string() : source.path;
            PicturePair& pair = pairs[name];
            pair.name = name;
            pair.*path = std::move(source.path);
            pair.problem = std::move(source.problem);
        }
    }
    std::vector<PicturePair> list;
    list.reserve(pairs.size());
    for (auto& [name, pair] : pairs) list.push_back(std::move(pair));
    return list;
}

} // namespace ozm::tool
