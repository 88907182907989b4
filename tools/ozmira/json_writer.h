#pragma once

#include "standard_output.h"
#include "text.h"

#include <rapidjson/writer.h>

#include <cmath>
#include <concepts>
#include <cstdint>
#include <span>
#include <string_view>

namespace ozm::tool {

/// Writes JSON to standard output as it is told, without ever holding a document in memory.
class JSONWriter {
public:
    explicit JSONWriter(StandardOutput& output) : m_writer(output) {}

    /// A number that reads back as the same one; one that is not finite is the string "inf", "-inf" or "nan".
    void Value(double number) {
        const std::string text = FormatNumber(number);
        if (std::isfinite(number)) {
            m_writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
        } else {
            Value(std::string_view(text));
        }
    }
    void Value(std::integral auto number) {
        if constexpr (std::same_as<decltype(number), bool>) {
            m_writer.Bool(number);
        } else if constexpr (std::signed_integral<decltype(number)>) {
            m_writer.Int64(number);
        } else {
            m_writer.Uint64(number);
        }
    }
    /// A string; bytes that are not UTF-8 become U+FFFD.
    void Value(std::string_view text) {
        const std::string valid = ValidUTF8(text);
        m_writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }
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
    /// The name of the member whose value comes next.
    void Key(std::string_view name) {
        m_writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    /// An object whose members `writeMembers` writes.
    void Object(auto&& writeMembers) {
        m_writer.StartObject();
        writeMembers();
        m_writer.EndObject();
    }
    /// An array whose values `writeValues` writes.
    void Array(auto&& writeValues) {
        m_writer.StartArray();
        writeValues();
        m_writer.EndArray();
    }

private:
    rapidjson::Writer<StandardOutput> m_writer;
};

} // namespace ozm::tool
