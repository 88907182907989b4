#pragma once

#include <Ozmira/ozmStringUtils.h>

namespace ozm {

/// Calls `strtod` in the "C" locale on a copy of the text. Range errors give 0.0.
double StrtodInCLocale(StringView text);

} // namespace ozm
