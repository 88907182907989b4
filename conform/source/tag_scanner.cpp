#include "source/tag_scanner.h"

#include <algorithm>

namespace ozm::conform {
namespace {

constexpr bool IsXMLSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

} // namespace

TagScanner::TagScanner(std::string_view text, size_t offset) : m_text(text), m_at(offset + 1) {
    m_tagName = ReadName();
}

void TagScanner::SkipSpaces() {
    while (m_at < m_text.size() && IsXMLSpace(m_text[m_at])) ++m_at;
}

std::string_view TagScanner::ReadName() {
    const size_t start = std::min(m_at, m_text.size());
    m_at = start;
    while (m_at < m_text.size() && !IsXMLSpace(m_text[m_at]) && m_text[m_at] != '=' && m_text[m_at] != '>' &&
           m_text[m_at] != '/') {
        ++m_at;
    }
    return m_text.substr(start, m_at - start);
}

bool TagScanner::Next() {
    SkipSpaces();
    m_nameOffset = m_at;
    m_name = ReadName();
    if (m_name.empty()) return false;
    SkipSpaces();
    if (m_at >= m_text.size() || m_text[m_at] != '=') return false;
    ++m_at;
    SkipSpaces();
    if (m_at >= m_text.size()) return false;
    m_valueOffset = m_at + 1;
    const size_t end = m_text.find(m_text[m_at], m_valueOffset);
    if (end == std::string_view::npos) return false;
    m_value = m_text.substr(m_valueOffset, end - m_valueOffset);
    m_at = end + 1;
    return true;
}

} // namespace ozm::conform
