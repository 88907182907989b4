#pragma once

#include "report/document_summary.h"
#include "report/json_writer.h"

namespace ozm::tool {

/// Writes what a document contains as members of the object that the caller has begun.
void WriteMembers(JSONWriter& json, const Document& document, const DocumentSummary& summary);

} // namespace ozm::tool
