#include "report/finding_json.h"

namespace ozm::tool {

void WriteJSON(JSONWriter& json, const conform::Finding& finding) {
    json.Object([&] {
        json.Member("line", finding.line);
        json.Member("column", finding.column);
        json.Member("rule", finding.rule);
        json.Member("severity", conform::SeverityName(finding.severity));
        json.Member("message", finding.message);
        json.Member("remedy", finding.remedy);
    });
}

} // namespace ozm::tool
