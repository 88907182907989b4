#pragma once

#include <string>
#include <vector>

namespace bench {

/// Removes "--icons=LIST" from the arguments and reads the files whose names LIST contains, one per line.
/// Ends the program with a message if the argument or a file is missing.
std::vector<std::string> LoadIcons(int& argc, char** argv);

/// Sum of the texts' lengths.
size_t TotalBytes(const std::vector<std::string>& texts);

} // namespace bench
