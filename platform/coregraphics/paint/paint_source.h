// The sources of colours for painting.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ozcg {

/// A colour for every pixel.
class PaintSource {
public:
    virtual ~PaintSource() = default;
    /// Writes the premultiplied colours of pixels x ..< x + n of row y, bytes R, G, B, A in memory.
    virtual void fetch(int x, int y, size_t n, uint32_t* rgba) = 0;
};

/// One colour everywhere.
class SolidSource final : public PaintSource {
public:
    explicit SolidSource(uint32_t rgba) : m_rgba(rgba) {}
    void fetch(int, int, size_t n, uint32_t* rgba) override {
        for (size_t i = 0; i < n; ++i) rgba[i] = m_rgba;
    }

private:
    uint32_t m_rgba;
};

} // namespace ozcg
