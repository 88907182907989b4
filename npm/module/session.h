#pragma once

#include "tools/ozmira/picture/png_encoder.h"

#include <cstdint>
#include <string>

namespace ozm::npm {

/// How a call has ended. The package knows these numbers, too (npm/src/errors.js).
enum Status : int {
    kDone = 0,
    kUnreadable = 1,  ///< The text is no drawing, or has too many tags.
    kTooComplex = 2,  ///< References form a cycle, or multiply beyond a limit.
    kBadSize = 3,     ///< The drawing has no size, or the picture would be too large.
    kTimeout = 4,     ///< Drawing took longer than it may.
    kRefused = 5,     ///< The drawing can't be rewritten.
    kBadOption = 6,   ///< An option has a value that makes no sense.
    kOutOfMemory = 7, ///< There is not enough memory.
};

/// How to draw. Lengths are in points; 0 stands for no limit.
struct Drawing {
    double width = 0, height = 0;
    double scale = 1;   ///< Pixels per point.
    double timeout = 0; ///< Seconds; 0 sets no limit.
    /// The default fill colour is a text of so many bytes at the end of the input; 0 stands for black.
    size_t fillSize = 0;
    bool writesPNG = true; ///< A PNG file rather than pixels: R G B A, not premultiplied.
};

/// What one call takes and leaves. Findings and facts are written to standard output as JSON, as the tool
/// does.
class Session {
public:
    /// Makes room for a text of `size` bytes. Null when the text is larger than what is read, or memory is
    /// short.
    char* ReserveInput(size_t size) noexcept;

    Status Check() noexcept;
    /// Leaves the rewritten drawing as output. If `decimals` is not a number, the size of the drawing
    /// decides.
    Status Conform(double decimals, bool outlineStrokes, bool lossy) noexcept;
    Status Info() noexcept;
    /// Leaves the picture as output.
    Status Render(const Drawing& drawing) noexcept;

    /// What the last call has left, or its error message.
    const std::string& Output() const { return m_output; }
    bool IsChanged() const { return m_isChanged; }
    uint32_t Width() const { return m_width; }
    uint32_t Height() const { return m_height; }

private:
    template <typename Work>
    Status Run(Work work) noexcept;

    tool::PNGEncoder m_encoder;
    std::string m_input, m_output;
    bool m_isChanged = false;
    uint32_t m_width = 0, m_height = 0;
};

} // namespace ozm::npm
