#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ozm::conform {

/// Finds the line and column of places in a text that are asked for from front to back.
class TextPlaces {
public:
    explicit TextPlaces(std::string_view text) : m_text(text) {}

    /// Goes to a byte, no earlier than that of the call before. Lines end with a line feed, a carriage return
    /// or both; columns count code points of UTF-8.
    void GoTo(size_t offset);
    uint32_t Line() const { return m_line; }
    uint32_t Column() const { return m_column; }

private:
    std::string_view m_text;
    size_t m_at = 0;
    uint32_t m_line = 1, m_column = 1;
};

/// The byte of the raw text of an attribute from which the byte `index` of its value comes, where entities
/// stand for characters.
size_t RawIndex(std::string_view raw, size_t index);

} // namespace ozm::conform
