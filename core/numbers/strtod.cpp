#include "numbers/strtod.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>

#if defined(__APPLE__)
#include <xlocale.h>
#else
#include <locale.h>
#endif

namespace ozm {
namespace {

double ConvertTerminatedText(const char* text) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    errno = 0;
    const double value = strtod_l(text, nullptr, cLocale);
    return errno == ERANGE ? 0.0 : value;
}

} // namespace

double StrtodInCLocale(StringView text) {
    std::array<char, 128> buffer;
    if (text.length < buffer.size()) {
        *std::copy(text.begin(), text.end(), buffer.begin()) = '\0';
        return ConvertTerminatedText(buffer.data());
    }
    return ConvertTerminatedText(std::string(text.data, text.length).c_str());
}

} // namespace ozm
