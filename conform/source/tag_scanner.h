#pragma once

#include <cstddef>
#include <string_view>

namespace ozm::conform {

/// Reads the attributes of a start tag as they are written. The tag has to be well-formed.
class TagScanner {
public:
    /// `offset` is that of the tag's "<".
    TagScanner(std::string_view text, size_t offset);

    /// Reads the next attribute; false at the end of the tag.
    bool Next();

    std::string_view TagName() const { return m_tagName; }
    size_t NameOffset() const { return m_nameOffset; }
    std::string_view Name() const { return m_name; }
    size_t ValueOffset() const { return m_valueOffset; }
    /// The text between the quotes.
    std::string_view Value() const { return m_value; }

private:
    void SkipSpaces();
    std::string_view ReadName();

    std::string_view m_text;
    size_t m_at;
    std::string_view m_tagName, m_name, m_value;
    size_t m_nameOffset = 0, m_valueOffset = 0;
};

} // namespace ozm::conform
