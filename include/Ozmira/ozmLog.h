#pragma once

#include <Ozmira/OzmiraExport.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// An ordered list of messages with levels.
struct OZM_CXX_EXPORT Log {
    /// The severity of a message.
    enum class Level : uint32_t { Error = 1, Warning = 2, Info = 3, Debug = 4 };

    /// One message.
    struct Entry {
        Level level; ///< May be a value without a name, which is shown as unknown.
        std::string message;
    };

    std::vector<Entry> entries; ///< In the order in which they were added.

    /// Adds a message at the end.
    void Append(Level level, std::string message);

    /// The label of a level, padded with blanks to 11 characters: "[Error]    ". Statically allocated.
    static const char* Label(Level level);
};

/// One line: the level's label, a blank, the message and a line feed.
OZM_CXX_EXPORT std::string to_string(const Log::Entry& entry);

/// The lines of all entries, in order.
OZM_CXX_EXPORT std::string to_string(const Log& log);

} // namespace ozm
