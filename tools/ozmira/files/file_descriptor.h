#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include <unistd.h>

namespace ozm::tool {

/// Owns an open file.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes over what `open` returned; -1 is no file.
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor() {
        if (m_descriptor >= 0) ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    /// Closes the file; false, with errno set, when its last bytes could not be written.
    bool Close() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

private:
    int m_descriptor = -1;
};

/// Writes all bytes; false, with errno set, when that fails.
bool WriteAll(int descriptor, std::span<const uint8_t> bytes);

/// What an error number means.
std::string DescribeError(int errorNumber);

} // namespace ozm::tool
