#pragma once

#include "base/text_output.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// Writes bytes to standard output. Throws `StandardOutputError` on failure.
void WriteToStandardOutput(std::span<const uint8_t> bytes);

/// Writes a text to standard output. Throws like `WriteToStandardOutput`.
void PrintText(std::string_view text);

/// Buffered standard output. The destructor writes nothing: call `Flush` at the end. All functions throw like
/// `WriteToStandardOutput`.
class StandardOutput final : public TextOutput {
public:
    void Write(std::string_view text) override;
    /// Writes what is buffered.
    void Flush();

private:
    static constexpr size_t kBufferSize = size_t{64} << 10;

    std::string m_buffer;
};

} // namespace ozm::tool
