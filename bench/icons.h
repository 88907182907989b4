#pragma once

#include <string>
#include <vector>

namespace bench {

/// Takes "--icons=LIST" out of the arguments and reads the files that LIST names, one a line. Ends the
/// program with a message when the argument or a file is missing.
std::vector<std::string> LoadIcons(int& argc, char** argv);

/// Sum of the texts' lengths.
size_t TotalBytes(const std::vector<std::string>& texts);

} // namespace bench
