#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace ozm::tool {

/// Where text goes.
class TextOutput {
public:
    virtual ~TextOutput() = default;

    virtual void Write(std::string_view text) = 0;
    void Put(char c) { Write({&c, 1}); }
};

/// Text that is kept in memory.
class StringOutput final : public TextOutput {
public:
    void Write(std::string_view text) override { m_text += text; }
    /// Gives away what was written.
    std::string Take() { return std::move(m_text); }

private:
    std::string m_text;
};

} // namespace ozm::tool
