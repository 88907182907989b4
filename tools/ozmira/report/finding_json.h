#pragma once

#include "report/json_writer.h"

#include <OzmiraConform/OzmiraConform.h>

namespace ozm::tool {

/// Writes a finding as one JSON object.
void WriteJSON(JSONWriter& json, const conform::Finding& finding);

} // namespace ozm::tool
