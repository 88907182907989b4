// The Core Foundation values: strings, data and arrays.
#pragma once

#include "base/object.h"
#include "base/ref.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

struct CFString final : ozcg::Object {
    /// Text that lives for ever: a literal.
    constexpr explicit CFString(const char* literal) noexcept : Object(ozcg::TypeId::string), text(literal) {}

    bool isEqualTo(const Object& other) const noexcept override {
        return text == static_cast<const CFString&>(other).text;
    }

    const std::string_view text; // ASCII, followed by a NUL
};

struct CFData final : ozcg::Object {
    explicit CFData(std::vector<UInt8> value)
        : Object(ozcg::TypeId::data), ownBytes(std::move(value)), bytes(ownBytes) {}
    /// Bytes inside an object, which is kept alive and must not change them.
    CFData(ozcg::Ref<const ozcg::Object> bytesOwner, std::span<const UInt8> content) noexcept
        : Object(ozcg::TypeId::data), owner(std::move(bytesOwner)), bytes(content) {}

    bool isEqualTo(const Object& other) const noexcept override {
        const std::span<const UInt8> others = static_cast<const CFData&>(other).bytes;
        return std::equal(bytes.begin(), bytes.end(), others.begin(), others.end());
    }

    const std::vector<UInt8> ownBytes;
    const ozcg::Ref<const ozcg::Object> owner;
    const std::span<const UInt8> bytes;
};

struct CFArray final : ozcg::Object {
    /// Retains the values when they are `objects`, otherwise borrows them.
    CFArray(std::vector<const void*> list, bool objects);
    ~CFArray() override;

    const std::vector<const void*> values;
    const bool holdsObjects;
};
