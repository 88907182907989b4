#pragma once

#include "files/output_plan.h"

#include <string>

namespace ozm::tool {

/// Rules in the language of make, which say that the target TARGET of a depfile TARGET.d was made from the
/// drawings of a plan. Each drawing also has a rule without a recipe, so that make can do without it once it
/// is gone. Throws `UsageError` if the name does not end in .d.
std::string MakeDepfile(const OutputPlan& plan, const std::string& name);

} // namespace ozm::tool
