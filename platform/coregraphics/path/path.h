// Path objects.
#pragma once

#include "base/object.h"
#include "path/path_data.h"

#include <CoreGraphics/CGPath.h>

/// A path object.
struct CGPath final : ozcg::Object {
    CGPath() noexcept : Object(ozcg::TypeId::path) {}
    explicit CGPath(ozcg::PathData content) noexcept : Object(ozcg::TypeId::path), data(std::move(content)) {}
    ~CGPath() override = default;

    bool isEqualTo(const Object& other) const noexcept override {
        return data == static_cast<const CGPath&>(other).data;
    }

    /// Frees the path that the calling thread keeps for its next one.
    static void releaseKept() noexcept;

    ozcg::PathData data;

private:
    void dispose() noexcept override;
};
