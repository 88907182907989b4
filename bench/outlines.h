#pragma once

#include "filler.h"

#include <Ozmira/ozmElement.h>

namespace bench {

/// The visible paths of a document, without those in definitions, in pixels: the view box is fitted into
/// `size` * `size` pixels and centred.
Outlines CollectOutlines(const ozm::Document& document, unsigned size);

} // namespace bench
