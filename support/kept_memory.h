#pragma once

namespace ozm::support {

#if defined(__SANITIZE_ADDRESS__)
#define OZMIRA_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OZMIRA_ADDRESS_SANITIZER 1
#endif
#endif

/// Whether threads keep freed memory for reuse. They do not under AddressSanitizer, which detects a use after
/// free and a double free only if memory is really freed.
#ifdef OZMIRA_ADDRESS_SANITIZER
inline constexpr bool kKeepsMemory = false;
#else
inline constexpr bool kKeepsMemory = true;
#endif

} // namespace ozm::support
