// Where a page is written.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// Throws `UsageError` if a page can't go where `-o` says: to a folder, to the name of a drawing, or nowhere.
void CheckPageName(const std::string& output);

/// Writes a page to a file, which replaces none of the sources, or to standard output for "-". Throws
/// `FileError`.
void WritePage(const std::string& output, std::string_view page, std::span<const std::string> sources);

} // namespace ozm::tool
