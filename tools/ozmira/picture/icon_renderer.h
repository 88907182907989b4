#pragma once

#include "picture/pixel_rows.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include <chrono>
#include <memory>

namespace ozm::tool {

/// A finished picture; owns its pixels.
class Bitmap {
public:
    /// Takes over an image in the renderer's format. Throws `std::bad_alloc`.
    explicit Bitmap(CGImageRef image);

    PixelRows Pixels() const { return m_pixels; }

private:
    struct ReleaseObject {
        void operator()(CFTypeRef object) const { CFRelease(object); }
    };

    std::unique_ptr<const void, ReleaseObject> m_data;
    PixelRows m_pixels;
};

/// Draws one document in several sizes. Borrows document and state. Sizes are in points, 0 being no limit.
class IconRenderer {
public:
    /// `timeout`: seconds of processor time that a picture may take; 0 sets no limit.
    IconRenderer(Document& document, const RenderingState& state, bool debugFrames, double timeout);

    /// Number of pixels of the picture that fits the size. Throws `FileError` when the document has no size,
    /// or the picture more than `kMaximumSide` pixels on a side or `kMaximumPixels` in all.
    double CheckSize(CGSize size, double scale) const;

    /// Draws the picture, whose size `CheckSize` has found possible. Throws `FileError` when it takes too
    /// long, and `std::bad_alloc`.
    Bitmap Draw(CGSize size, double scale);

private:
    CGSize PixelSize(CGSize size, double scale) const;
    CGImageRef CreateImage(CGSize size, double scale);
    bool IsLate();

    CoreGraphicsRenderer m_renderer;
    const RenderingState& m_state;
    double m_timeout;
    std::chrono::steady_clock::time_point m_started;
    double m_processorTimeBefore = 0; ///< Of the thread, in seconds.
    bool m_isLate = false;            ///< The picture at hand, or the last one.
};

} // namespace ozm::tool
