// Parses the values of options, or checks those that are numbers already. All functions throw `UsageError`,
// which names the option and the values it takes.
#pragma once

#include <Ozmira/ozmStyle.h>

#include <string>
#include <string_view>
#include <vector>

namespace ozm::tool {

/// A length in points, above 0 and at most `kMaximumSide`.
double ParseLengthArgument(std::string_view option, std::string_view text);
double CheckLength(std::string_view option, double length);

/// Pixels per point: a list of distinct numbers separated by commas.
std::vector<double> ParseScales(std::string_view option, std::string_view text);

/// Pixels per point: one number.
double ParseScale(std::string_view option, std::string_view text);
double CheckScale(std::string_view option, double scale);

/// A difference of pictures from 0 to 255.
double ParseThreshold(std::string_view option, std::string_view text);

/// A colour in the notation of SVG, or with hexadecimal digits for its alpha, which may have whitespace
/// around it.
Color ParseColorArgument(std::string_view option, std::string_view text);

/// A number of seconds from 0 to `kMaximumTimeout`.
double ParseTimeout(std::string_view option, std::string_view text);
double CheckTimeout(std::string_view option, double seconds);

/// A number of decimals from 0 to 12.
int ParseDecimals(std::string_view option, std::string_view text);

/// A number of threads from 1 to `kMaximumJobs`.
unsigned ParseJobs(std::string_view option, std::string_view text);

} // namespace ozm::tool
