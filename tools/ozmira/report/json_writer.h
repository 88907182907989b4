#pragma once

#include "base/text.h"
#include "base/text_output.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// Writes JSON piece by piece, without holding all of it in memory.
class JSONWriter {
public:
    explicit JSONWriter(TextOutput& output) : m_output(output) {}

    /// A number, which reads back as the same number. One that is not finite becomes the string "inf", "-inf"
    /// or "nan".
    void Value(double number) {
        if (std::isfinite(number)) {
            WriteToken(FormatNumber(number));
        } else {
            Value(std::string_view(FormatNumber(number)));
        }
    }
    void Value(std::integral auto number) {
        if constexpr (std::same_as<decltype(number), bool>) {
            WriteToken(number ? "true" : "false");
        } else {
            WriteToken(std::to_string(number));
        }
    }
    /// A string; bytes that are not UTF-8 become U+FFFD.
    void Value(std::string_view text) { WriteToken(QuoteJSON(text)); }
    void Value(std::span<const double> numbers) {
        Array([&] {
            for (const double number : numbers) Value(number);
        });
    }

    /// A member of an object.
    void Member(std::string_view name, const auto& value) {
        Key(name);
        Value(value);
    }
    /// The name of a member, whose value must be written next.
    void Key(std::string_view name) {
        WriteToken(QuoteJSON(name));
        m_output.Put(':');
        m_needsComma = false;
    }
    /// An object whose members `writeMembers` writes.
    void Object(auto&& writeMembers) { Enclose('{', writeMembers, '}'); }
    /// An array whose values `writeValues` writes.
    void Array(auto&& writeValues) { Enclose('[', writeValues, ']'); }

private:
    void WriteToken(std::string_view token) {
        if (m_needsComma) m_output.Put(',');
        m_output.Write(token);
        m_needsComma = true;
    }
    void Enclose(char open, auto&& writeContent, char close) {
        WriteToken({&open, 1});
        m_needsComma = false;
        writeContent();
        m_output.Put(close);
        m_needsComma = true;
    }

    TextOutput& m_output;
    bool m_needsComma = false; ///< The next value follows another one in the same object or array.
};

} // namespace ozm::tool
