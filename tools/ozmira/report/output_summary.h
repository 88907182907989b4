#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ozm::tool {

/// What became of the outputs of a run.
struct OutputCounts {
    size_t written = 0;
    size_t unchanged = 0; ///< Left alone, because the same bytes stood there.
};

/// "3 pictures written to out/, 7 already there"; in a dry run "3 pictures would be written ...".
std::string DescribeOutputs(std::string_view noun, const OutputCounts& counts, std::string_view destination,
                            bool isDryRun);

/// ", 1 file failed, 12 files not reached"; empty if neither happened.
std::string DescribeShortfall(size_t failed, size_t unreached);

/// The line about a drawing of whose picture nothing can be seen.
std::string DescribeBlank(const std::string& source);

} // namespace ozm::tool
