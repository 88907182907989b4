#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// Writes bytes to standard output. Throws `StandardOutputError` when it can't take them.
void WriteToStandardOutput(std::span<const uint8_t> bytes);

/// Standard output with a buffer of fixed size. Nothing is written when it is destroyed: call `Flush`, which
/// throws as `WriteToStandardOutput` does.
class StandardOutput {
public:
    void Put(char c) {
        if (m_buffer.size() == kBufferSize) Flush();
        m_buffer += c;
    }
    void Write(std::string_view text);
    void Flush();

private:
    static constexpr size_t kBufferSize = size_t{64} << 10;

    std::string m_buffer;
};

} // namespace ozm::tool
