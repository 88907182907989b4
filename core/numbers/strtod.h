#pragma once

#include <Ozmira/ozmStringUtils.h>

namespace ozm {

/// Returns the result of `strtod` in the "C" locale for a copy of the text, or 0.0 on a range error.
double StrtodInCLocale(StringView text);

} // namespace ozm
