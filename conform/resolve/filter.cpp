// Filters that only change colours.
#include "resolve/walker.h"

namespace ozm::conform {

void Walker::ApplyFilter(const Node& node, Context&) { m_findings.Add(Rule::Filter, node.offset); }

} // namespace ozm::conform
