// The drawing context: a surface, a current path, and a stack of graphics states.
#pragma once

#include "base/out_of_memory.h"
#include "base/ref.h"
#include "context/graphics_state.h"
#include "image/image.h"
#include "paint/painter.h"
#include "raster/interrupt.h"

#include <CoreGraphics/CGBitmapContext.h>

#include <vector>

namespace ozcg {

/// The parameters that a bitmap context was created with.
struct BitmapFormat {
    size_t width = 0;
    size_t height = 0;
    size_t bytesPerRow = 0;
    CGBitmapInfo info = 0;
    PixelOrder order = PixelOrder::argb;
    bool isOpaque = false; // the byte for alpha is not used
};

/// The caller's memory that a context draws into, and the callback that releases it.
struct BorrowedPixels {
    uint8_t* bytes = nullptr;
    CGBitmapContextReleaseDataCallback release = nullptr;
    void* releaseInfo = nullptr;
};

} // namespace ozcg

/// A bitmap context.
struct CGContext final : ozcg::Object {
    /// A context with memory of its own, or with the caller's.
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace,
              ozcg::Ref<ozcg::PixelStorage> pixels);
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace,
              const ozcg::BorrowedPixels& pixels);
    ~CGContext() override;

    /// The surface, ready to be written: pixels that an image shares are copied first. Throws std::bad_alloc.
    const ozcg::Surface& surfaceForDrawing();
    /// The first byte of the pixels, which the caller may read and write from now on, as long as the context
    /// lives. Throws std::bad_alloc.
    uint8_t* exposedPixels();
    /// An image of the pixels as they are now; NULL when memory is short. The caller owns the result.
    CGImage* createImage();
    /// From user space to the space the context was made with, y up.
    CGAffineTransform userToBase() const;
    ozcg::Compositing compositing() const;
    /// Runs `function`, which may run out of memory or be interrupted. Returns false if it did, and marks the
    /// drawing as incomplete.
    template <class Function>
    bool complete(Function&& function) noexcept {
        const bool done = ozcg::orWhenOutOfMemory(false, [&] {
            try {
                std::forward<Function>(function)();
                return true;
            } catch (const ozcg::Interrupted&) {
                return false;
            }
        });
        if (!done) isIncomplete = true;
        return done;
    }

    /// Whether an argument is NULL. The drawing is incomplete if it is so because memory was short.
    template <class T>
    bool isMissing(const T* argument) noexcept {
        if (ozcg::isFailure(argument)) isIncomplete = true;
        return !argument;
    }

    const ozcg::BitmapFormat format;
    const ozcg::Ref<CGColorSpace> space;
    ozcg::GraphicsState state;
    std::vector<ozcg::GraphicsState> saved;
    size_t unsaved = 0;            // states above `saved` that there was no memory for
    ozcg::GraphicsState lastSaved; // the lowest of them
    ozcg::PathData path;           // in pixels
    bool allowsAntialiasing = true;
    bool isIncomplete = false;             // part of the drawing is missing
    ozcg::Ref<ozcg::PixelStorage> storage; // empty with the caller's memory

private:
    CGContext(const ozcg::BitmapFormat& bitmapFormat, CGColorSpace* colorSpace, uint8_t* bytes);

    ozcg::BorrowedPixels m_borrowed;
    ozcg::Surface surface;
    bool m_isExposed = false; // the caller knows where the pixels are, so images must not share them
};

namespace ozcg {

/// `value` if it is finite, else `otherwise`.
constexpr double finiteOr(double value, double otherwise) { return value - value == 0 ? value : otherwise; }

} // namespace ozcg
