#include "report/batch_failures.h"

#include "base/errors.h"
#include "base/text.h"

#include <exception>
#include <new>

namespace ozm::tool {
namespace {

std::string Describe(const std::string& source, const char* problem) noexcept {
    try {
        return InputName(source) + ": " + problem;
    } catch (const std::bad_alloc&) {
        return "no memory left"; // short enough to be stored without allocating
    }
}

} // namespace

std::string BatchFailures::DescribeException(const std::string& source) noexcept {
    try {
        throw;
    } catch (const DestinationError& error) {
        if (m_stop.Request()) return Describe(source, error.what());
        ++m_dropped;
        return {};
    } catch (const std::bad_alloc&) {
        return Describe(source, kOutOfMemory);
    } catch (const std::exception& error) {
        return Describe(source, error.what());
    }
}

} // namespace ozm::tool
