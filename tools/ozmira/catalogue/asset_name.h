#pragma once

#include <string>
#include <string_view>

namespace ozm::tool {

/// Why a name can't be that of an asset, such as "it contains \":\""; empty if it can.
std::string WhyNoAssetName(std::string_view name);

/// The same for the name of a group of assets.
std::string WhyNoGroupName(std::string_view name);

} // namespace ozm::tool
