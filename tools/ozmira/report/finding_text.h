#pragma once

#include <OzmiraConform/OzmiraConform.h>

#include <string>

namespace ozm::tool {

/// A finding on one line: "FILE:LINE:COLUMN: warning: MESSAGE; REMEDY [RULE]".
std::string DescribeFinding(const std::string& source, const conform::Finding& finding);

} // namespace ozm::tool
