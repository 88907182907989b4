#pragma once

#include "report/json_writer.h"

#include <OzmiraConform/OzmiraConform.h>

#include <functional>
#include <span>
#include <string>

namespace ozm::tool {

/// Takes the findings of one file.
using FindingSink = std::function<void(const std::string& file, std::span<const conform::Finding> findings)>;

/// Writes a log in the Static Analysis Results Interchange Format 2.1.0: all rules, and the findings that
/// `writeFiles` passes to the sink which it is given.
void WriteSARIF(JSONWriter& json, const std::function<void(const FindingSink&)>& writeFiles);

} // namespace ozm::tool
