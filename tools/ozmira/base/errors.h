#pragma once

#include <stdexcept>

namespace ozm::tool {

/// Exit codes of the process.
enum ExitCode : int {
    kExitSuccess = 0, ///< Everything was done.
    kExitFailure = 1, ///< A file could not be read, drawn or written.
    kExitUsage = 2,   ///< The arguments make no sense; nothing was done.
};

/// What is wrong with a file, and what to do about it. The text does not name the file.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The message for a file that there is not enough memory for.
inline constexpr const char* kOutOfMemory =
    "there is not enough memory for it; choose a smaller size or fewer threads (-j), or split the drawing";

/// Standard output can't be written.
class StandardOutputError : public FileError {
public:
    using FileError::FileError;
};

/// An output can't be written, and no other one could be: the disk is full or may not be written to.
class DestinationError : public FileError {
public:
    using FileError::FileError;
};

/// What is wrong with the arguments, and what is expected instead.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace ozm::tool
