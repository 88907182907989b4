#include "files/standard_output.h"

#include "base/errors.h"
#include "base/text.h"
#include "files/file_descriptor.h"

#include <cerrno>

namespace ozm::tool {

void WriteToStandardOutput(std::span<const uint8_t> bytes) {
    if (!WriteAll(STDOUT_FILENO, bytes)) {
        throw StandardOutputError("cannot write standard output: " + DescribeError(errno));
    }
}

void PrintText(std::string_view text) { WriteToStandardOutput(BytesOf(text)); }

void StandardOutput::Write(std::string_view text) {
    m_buffer += text;
    if (m_buffer.size() >= kBufferSize) Flush();
}

void StandardOutput::Flush() {
    PrintText(m_buffer);
    m_buffer.clear();
}

} // namespace ozm::tool
