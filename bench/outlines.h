#pragma once

#include "filler.h"

#include <Ozmira/ozmDocument.h>

namespace bench {

/// The paths of a document, hidden ones and those in definitions left out, with its view box fitted into
/// `size` * `size` pixels and centred.
Outlines CollectOutlines(const ozm::Document& document, unsigned size);

} // namespace bench
