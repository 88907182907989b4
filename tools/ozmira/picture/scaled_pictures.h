#pragma once

#include "picture/icon_renderer.h"
#include "picture/pixel_rows.h"

#include <cstddef>
#include <functional>
#include <mutex>
#include <span>

namespace ozm::tool {

/// Draws documents at several scales. Threads share one object, so that only one of them at a time has very
/// large pictures in memory.
class ScaledPictures {
public:
    /// Takes the picture for a scale, which is valid during the call.
    using Sink = std::function<void(size_t scale, const PixelRows& pixels)>;

    /// Hands a picture for each scale to the sink, none if one of them would be too large. Sizes are in
    /// points; 0 means no limit. Throws like `IconRenderer` and like the sink.
    void Draw(IconRenderer& renderer, CGSize size, std::span<const double> scales, const Sink& sink);

    /// Makes other threads wait with very large pictures from the first one until it is destroyed. A thread
    /// has one turn at a time; `Draw` takes one of its own.
    class Turn {
    public:
        explicit Turn(ScaledPictures& pictures) : m_lock(pictures.m_largePicture, std::defer_lock) {}
        /// To be called before a picture of so many pixels is in memory.
        void Expect(double pixels);

    private:
        std::unique_lock<std::mutex> m_lock;
    };

private:
    std::mutex m_largePicture;
};

} // namespace ozm::tool
