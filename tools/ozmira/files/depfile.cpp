#include "files/depfile.h"

#include "base/errors.h"
#include "base/text.h"

#include <string_view>

namespace ozm::tool {
namespace {

/// The path with what make and ninja would read as something else escaped.
std::string Escape(const std::string& path) {
    std::string escaped;
    for (const char c : path) {
        if (c == ' ' || c == '#' || c == '\\' || c == ':') escaped += '\\';
        if (c == '$') escaped += '$';
        escaped += c;
    }
    return escaped;
}

} // namespace

std::string MakeDepfile(const OutputPlan& plan, const std::string& name) {
    constexpr std::string_view kExtension = ".d";
    if (name.size() <= kExtension.size() || !name.ends_with(kExtension)) {
        throw UsageError(
            "--depfile: \"" + OnOneLine(name) +
            "\" does not end in .d; call it TARGET.d, after the target that depends on drawings");
    }
    std::string rule = Escape(name.substr(0, name.size() - kExtension.size())) + ":", others;
    for (const IconPlan& icon : plan.icons) {
        if (!icon.problem.empty() || icon.source == "-") continue;
        const std::string drawing = Escape(icon.source);
        rule += " \\\n  " + drawing;
        others += drawing + ":\n";
    }
    return rule + "\n" + others;
}

} // namespace ozm::tool
