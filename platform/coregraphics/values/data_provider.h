// Shared, immutable bytes and who keeps them alive.
#pragma once

#include "base/object.h"
#include "base/ref.h"

#include <CoreGraphics/CGDataProvider.h>

#include <cstdint>
#include <span>

struct CGDataProvider final : ozcg::Object {
    /// Bytes inside an object, which is kept alive.
    CGDataProvider(ozcg::Ref<const ozcg::Object> bytesOwner, std::span<const uint8_t> content) noexcept
        : Object(ozcg::TypeId::dataProvider), bytes(content), owner(std::move(bytesOwner)) {}
    /// Bytes of the caller's, given back through the callback (may be NULL).
    CGDataProvider(std::span<const uint8_t> content, CGDataProviderReleaseDataCallback callback,
                   void* callbackInfo) noexcept
        : Object(ozcg::TypeId::dataProvider), bytes(content), releaseData(callback), info(callbackInfo) {}
    ~CGDataProvider() override {
        if (releaseData) releaseData(info, bytes.data(), bytes.size());
    }

    const std::span<const uint8_t> bytes;
    const ozcg::Ref<const ozcg::Object> owner;
    const CGDataProviderReleaseDataCallback releaseData = nullptr;
    void* const info = nullptr;
};
