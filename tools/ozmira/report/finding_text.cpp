#include "report/finding_text.h"

#include "base/text.h"

namespace ozm::tool {

std::string DescribeFinding(const std::string& source, const conform::Finding& finding) {
    std::string text = OnOneLine(InputName(source));
    text += ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column) + ": ";
    text += conform::SeverityName(finding.severity);
    text += ": " + OnOneLine(finding.message) + "; ";
    text += finding.remedy;
    text += " [";
    text += finding.rule;
    text += ']';
    return text;
}

} // namespace ozm::tool
