#include "files/file_descriptor.h"

#include <cerrno>
#include <system_error>

namespace ozm::tool {

bool WriteAll(int descriptor, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        bytes = bytes.subspan(static_cast<size_t>(written));
    }
    return true;
}

std::string DescribeError(int errorNumber) { return std::generic_category().message(errorNumber); }

} // namespace ozm::tool
