#include "report/output_summary.h"

#include "base/text.h"

namespace ozm::tool {

std::string DescribeOutputs(std::string_view noun, const OutputCounts& counts, std::string_view destination,
                            bool isDryRun) {
    const std::string verb = isDryRun ? " would be written" : " written";
    if (counts.written + counts.unchanged == 0) return "no " + std::string(noun) + verb;
    std::string text = counts.written == 0 ? "no " + std::string(noun) : CountOf(counts.written, noun);
    text += verb + " to " + std::string(destination);
    if (counts.unchanged > 0) text += ", " + FormatCount(counts.unchanged) + " already there";
    return text;
}

std::string DescribeShortfall(size_t failed, size_t unreached) {
    std::string text;
    if (failed > 0) text += ", " + CountOf(failed, "file") + " failed";
    if (unreached > 0) text += ", " + CountOf(unreached, "file") + " not reached";
    return text;
}

std::string DescribeBlank(const std::string& source) {
    return InputName(source) + ": warning: the picture is blank, nothing is painted\n";
}

} // namespace ozm::tool
