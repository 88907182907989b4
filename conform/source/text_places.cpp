#include "source/text_places.h"

#include <algorithm>

namespace ozm::conform {

void TextPlaces::GoTo(size_t offset) {
    for (const size_t end = std::min(offset, m_text.size()); m_at < end; ++m_at) {
        const char c = m_text[m_at];
        if (c == '\n' || (c == '\r' && !(m_at + 1 < m_text.size() && m_text[m_at + 1] == '\n'))) {
            ++m_line;
            m_column = 1;
        } else if ((c & 0xC0) != 0x80) {
            ++m_column;
        }
    }
}

size_t RawIndex(std::string_view raw, size_t index) {
    size_t at = 0;
    // An entity of XML's own or a character reference stands for one byte here; that those beyond ASCII stand
    // for more only moves a place by a few characters.
    for (size_t i = 0; i < index && at < raw.size(); ++i) {
        if (raw[at] == '&') {
            const size_t end = raw.find(';', at);
            at = end == std::string_view::npos ? at + 1 : end + 1;
        } else {
            at += raw.substr(at, 2) == "\r\n" ? 2 : 1;
        }
    }
    return std::min(at, raw.size());
}

} // namespace ozm::conform
