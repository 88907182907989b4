#pragma once

#include "report/json_writer.h"

#include <Ozmira/ozmElement.h>

namespace ozm::tool {

/// Writes a whole document as one JSON object.
void WriteJSON(JSONWriter& json, const Document& document);

/// Writes a number and its unit as a JSON object.
void WriteJSON(JSONWriter& json, const Dimension& dimension);

/// Writes origin and size as a JSON array of four numbers.
void WriteJSON(JSONWriter& json, const Rectf& rectangle);

} // namespace ozm::tool
