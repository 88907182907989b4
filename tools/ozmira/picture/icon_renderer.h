#pragma once

#include "picture/pixel_rows.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include <chrono>
#include <memory>
#include <string>

namespace ozm::tool {

/// A finished picture, which owns its pixels.
class Bitmap {
public:
    /// Takes ownership of an image in the renderer's format. Throws `std::bad_alloc`.
    explicit Bitmap(CGImageRef image);

    PixelRows Pixels() const { return m_pixels; }

private:
    struct ReleaseObject {
        void operator()(CFTypeRef object) const { CFRelease(object); }
    };

    std::unique_ptr<const void, ReleaseObject> m_data;
    PixelRows m_pixels;
};

/// Draws one document in several sizes. Borrows the document and the state. Sizes are in points; 0 means no
/// limit.
class IconRenderer {
public:
    /// `timeout` limits the processor time for a picture, in seconds; 0 means no limit.
    IconRenderer(Document& document, const RenderingState& state, bool debugFrames, double timeout);

    /// The size in points of the picture that fits the size.
    CGSize FittingSize(CGSize size, double scale) const { return m_renderer.imageSizeFitToSize(size, scale); }

    /// Throws `FileError` if the document has no size.
    void CheckViewPort() const;
    /// Number of pixels of the picture that fits the size. Throws `FileError` if the document has no size or
    /// the picture exceeds `kMaximumSide` pixels on a side or `kMaximumPixels` in all.
    double CheckSize(CGSize size, double scale) const;

    /// Draws the picture that fits the size, which must have passed `CheckSize`. Throws `FileError` if it
    /// takes too long, and `std::bad_alloc`.
    Bitmap Draw(CGSize size, double scale);

private:
    CGSize PixelSize(CGSize size, double scale) const;
    CGImageRef CreateImage(CGSize size, double scale);
    /// True once the current picture has taken too long.
    bool CheckTimeout();

    CoreGraphicsRenderer m_renderer;
    const RenderingState& m_state;
    double m_timeout;
    std::chrono::steady_clock::time_point m_startTime;
    double m_startProcessorTime = 0; ///< Of the drawing thread, in seconds.
    bool m_hasTimedOut = false;      ///< Whether the current picture, or else the last one, took too long.
};

/// What keeps a document from being drawn in any size; empty if nothing does.
std::string SizeProblem(Document& document);

} // namespace ozm::tool
