#include "catalogue/catalogue_folder.h"

#include "base/errors.h"
#include "base/text.h"
#include "catalogue/contents_json.h"
#include "catalogue/set_names.h"
#include "files/input_file.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace ozm::tool {
namespace {

namespace fs = std::filesystem;

bool IsOwn(const fs::path& folder) { return IsOwnContents(ReadContents(folder).value_or("")); }

/// The entries of a folder, sorted by name; none if it can't be listed.
std::vector<fs::directory_entry> EntriesOf(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        entries.push_back(*at);
    std::sort(entries.begin(), entries.end());
    return entries;
}

/// A folder itself, not a link to one.
bool IsFolder(const fs::directory_entry& entry) {
    std::error_code ignored;
    return entry.is_directory(ignored) && !entry.is_symlink(ignored);
}

/// Whether a file of a set has one of the names that this tool gives.
bool HasOwnName(const fs::path& set, const std::string& fileName) {
    const std::string name = set.stem().string();
    if (fileName == kContentsName) return true;
    for (const bool isDark : {false, true}) {
        const std::string stem = ImageStem(name, isDark);
        if (fileName == DrawingName(stem)) return true;
        for (const double scale : kScales) {
            if (fileName == PictureName(stem, scale)) return true;
        }
    }
    return false;
}

class LeftoverSearch {
public:
    LeftoverSearch(const fs::path& catalogue, std::span<const ImageSetPlan> sets, const MadeSets& made)
        : m_catalogue(catalogue), m_made(made) {
        for (const ImageSetPlan& set : sets) m_planned.insert(set.folder);
        Enter(catalogue);
    }

    std::vector<std::string> TakeFound() { return std::move(m_found); }

private:
    void Enter(const fs::path& folder) {
        for (const fs::directory_entry& entry : EntriesOf(folder)) {
            if (!IsFolder(entry)) continue;
            if (entry.path().extension() == kSetExtension) {
                Examine(entry.path());
            } else if (!entry.path().has_extension()) {
                Enter(entry.path());
            }
        }
    }

    void Examine(const fs::path& set) {
        const std::string name = set.lexically_relative(m_catalogue).string();
        if (!m_planned.contains(name)) {
            if (IsOwn(set)) m_found.push_back(set.string());
            return;
        }
        const auto made = m_made.find(name);
        if (made == m_made.end()) return;
        for (const fs::directory_entry& entry : EntriesOf(set)) {
            const std::string fileName = entry.path().filename().string();
            if (HasOwnName(set, fileName) && !made->second.contains(fileName))
                m_found.push_back(entry.path().string());
        }
    }

    const fs::path m_catalogue;
    const MadeSets& m_made;
    std::set<std::string> m_planned;
    std::vector<std::string> m_found;
};

/// Removes a file or an empty folder.
void Remove(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) {
        throw FileError("cannot remove " + OnOneLine(path.string()) + ": " + error.message() +
                        "; allow writing to its folder, or remove it by hand");
    }
}

void RemoveSet(const fs::path& set) {
    bool isEmpty = true;
    // The description goes last, because the set is not known as this tool's without it.
    std::vector<fs::directory_entry> entries = EntriesOf(set);
    std::stable_partition(entries.begin(), entries.end(), [](const fs::directory_entry& entry) {
        return entry.path().filename() != kContentsName;
    });
    for (const fs::directory_entry& entry : entries) {
        if (!IsFolder(entry) && HasOwnName(set, entry.path().filename().string())) {
            Remove(entry.path());
        } else {
            isEmpty = false;
        }
    }
    if (isEmpty) Remove(set);
}

/// Removes a group that holds nothing but its description, and then the group around it if that is so too.
void RemoveEmptyGroups(const fs::path& catalogue, fs::path group) {
    for (; group != catalogue && IsOwn(group); group = group.parent_path()) {
        if (EntriesOf(group).size() != 1) return;
        Remove(group / kContentsName);
        Remove(group);
    }
}

} // namespace

std::optional<std::string> ReadContents(const fs::path& folder) try {
    std::error_code ignored;
    if (!fs::exists(folder / kContentsName, ignored)) return {};
    return ReadInput((folder / kContentsName).string());
} catch (const FileError& error) {
    // What it says behind the problem is meant for drawings.
    const std::string_view text = error.what();
    throw FileError(OnOneLine((folder / kContentsName).string()) + ": " +
                    std::string(text.substr(0, text.find("; "))) + "; make it readable, or remove it");
}

bool IsForeign(const fs::path& folder) {
    const std::optional<std::string> contents = ReadContents(folder);
    return contents && !IsOwnContents(*contents);
}

std::vector<std::string> FindLeftovers(const std::string& catalogue, std::span<const ImageSetPlan> sets,
                                       const MadeSets& made) {
    return LeftoverSearch(catalogue, sets, made).TakeFound();
}

void RemoveLeftovers(const std::string& catalogue, std::span<const std::string> leftovers) {
    for (const fs::path path : leftovers) {
        if (path.extension() == kSetExtension) {
            RemoveSet(path);
            RemoveEmptyGroups(catalogue, path.parent_path());
        } else {
            Remove(path);
        }
    }
}

} // namespace ozm::tool
