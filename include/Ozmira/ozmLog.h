#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// An ordered list of messages with levels.
struct Log {
    enum class Level : uint32_t { Error = 1, Warning = 2, Info = 3, Debug = 4 };

    struct Entry {
        Level level; ///< Other values than the named ones are allowed and shown as unknown.
        std::string message;
    };

    std::vector<Entry> entries;

    void Append(Level level, std::string message);

    /// The label under which a level is shown, padded with blanks to 11 characters: "[Error]    ".
    static const char* Label(Level level);
};

/// The entry's line of the shown log: label, blank, message, line feed.
std::string to_string(const Log::Entry& entry);

/// The lines of all entries, in order.
std::string to_string(const Log& log);

} // namespace ozm
