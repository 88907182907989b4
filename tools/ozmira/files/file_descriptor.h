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
    /// Takes ownership of what `open` returned; -1 means no file.
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
    /// Closes the file. Returns false and sets errno if its last bytes could not be written.
    bool Close() { return ::close(std::exchange(m_descriptor, -1)) == 0; }

private:
    int m_descriptor = -1;
};

/// Writes all bytes. Returns false and sets errno on failure.
bool WriteAll(int descriptor, std::span<const uint8_t> bytes);

/// The meaning of an errno value.
std::string DescribeError(int errorNumber);

} // namespace ozm::tool
