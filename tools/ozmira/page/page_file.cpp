#include "page/page_file.h"

#include "base/errors.h"
#include "base/text.h"
#include "files/output_files.h"
#include "files/output_guard.h"
#include "files/standard_output.h"

#include <filesystem>
#include <system_error>

namespace ozm::tool {

void CheckPageName(const std::string& output) {
    if (output.empty()) throw UsageError("-o: the name is empty; name a file such as report.html");
    std::error_code ignored;
    if (std::filesystem::is_directory(output, ignored)) {
        throw UsageError("-o: \"" + OnOneLine(output) + "\" is a folder; name a file in it");
    }
    if (IsDrawingName(output)) {
        throw UsageError("-o: \"" + OnOneLine(output) + "\" has the name of a drawing; name a page");
    }
}

void WritePage(const std::string& output, std::string_view page, std::span<const std::string> sources) {
    if (output == "-") {
        PrintText(page);
    } else {
        OutputFiles(sources).Write(output, BytesOf(page), OutputKind::Page);
    }
}

} // namespace ozm::tool
