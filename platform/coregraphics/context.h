// The drawing context: a surface, a current path, and a stack of graphics states.
#pragma once

#include "graphics_state.h"
#include "image.h"
#include "painter.h"

#include <CoreGraphics/CGBitmapContext.h>

#include <vector>

namespace ozcg {

/// What a bitmap context was made with.
struct BitmapFormat {
    size_t width = 0;
    size_t height = 0;
    size_t bytesPerRow = 0;
    CGBitmapInfo info = 0;
    PixelOrder order = PixelOrder::argb;
};

/// Memory of the caller's that a context draws into, and how it is given back.
struct BorrowedPixels {
    uint8_t* bytes = nullptr;
    CGBitmapContextReleaseDataCallback release = nullptr;
    void* releaseInfo = nullptr;
};

} // namespace ozcg

struct CGContext final : ozcg::Object {
    /// A context with memory of its own, or with the caller's.
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace,
              ozcg::Ref<ozcg::PixelStorage> pixels);
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace,
              const ozcg::BorrowedPixels& pixels);
    ~CGContext() override;

    /// The surface, ready to be written: pixels that an image shares are copied first. Throws std::bad_alloc.
    const ozcg::Surface& surfaceForDrawing();
    /// The first byte of the pixels.
    uint8_t* pixels() const { return surface.bytes; }
    /// From user space to the space the context was made with, y up.
    CGAffineTransform userToBase() const;
    ozcg::Compositing compositing() const;

    const ozcg::BitmapFormat format;
    const ozcg::Ref<CGColorSpace> space;
    ozcg::GraphicsState state;
    std::vector<ozcg::GraphicsState> saved;
    ozcg::PathData path; // in pixels
    bool allowsAntialiasing = true;
    ozcg::Ref<ozcg::PixelStorage> storage; // empty with the caller's memory

private:
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace, uint8_t* bytes);

    ozcg::BorrowedPixels m_borrowed;
    ozcg::Surface surface;
};

namespace ozcg {

/// Runs what may run out of memory while it draws or changes a path; it is then left undone in part.
template <class Function>
void whileMemoryLasts(Function&& function) noexcept {
    orWhenOutOfMemory(false, [&] {
        std::forward<Function>(function)();
        return true;
    });
}

/// A finite number, or something to take its place.
constexpr double finiteOr(double value, double otherwise) { return value - value == 0 ? value : otherwise; }

} // namespace ozcg
