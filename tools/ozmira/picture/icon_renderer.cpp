#include "picture/icon_renderer.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"

#include <cmath>
#include <new>
#include <string>

#include <time.h>
#if __has_include(<CoreGraphics/OZMInterrupt.h>)
#include <CoreGraphics/OZMInterrupt.h>
#else
/// Apple's library can't be interrupted, so the time is checked between elements alone.
static void OZMSetDrawingInterrupt(bool (*)(void*), void*) {}
#endif

namespace ozm::tool {
namespace {

std::string DescribeSize(CGSize size) { return FormatNumber(size.width) + " x " + FormatNumber(size.height); }

/// Processor time used by this thread, in seconds.
double ThreadProcessorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// While it exists, lets a function interrupt the drawing of this thread.
class DrawingInterrupt {
public:
    DrawingInterrupt(bool (*isDue)(void*), void* info) { OZMSetDrawingInterrupt(isDue, info); }
    ~DrawingInterrupt() { OZMSetDrawingInterrupt(nullptr, nullptr); }
    DrawingInterrupt(const DrawingInterrupt&) = delete;
    DrawingInterrupt& operator=(const DrawingInterrupt&) = delete;
};

bool IsUsable(double length) { return length > 0 && std::isfinite(length); }

} // namespace

Bitmap::Bitmap(CGImageRef image) {
    m_pixels = {nullptr, CGImageGetWidth(image), CGImageGetHeight(image), CGImageGetBytesPerRow(image)};
    const CFDataRef data = CGDataProviderCopyData(CGImageGetDataProvider(image));
    CGImageRelease(image);
    if (!data) throw std::bad_alloc();
    m_data.reset(data);
    m_pixels.bytes = CFDataGetBytePtr(data);
}

IconRenderer::IconRenderer(Document& document, const RenderingState& state, bool debugFrames, double timeout)
    : m_state(state), m_timeout(timeout) {
    m_renderer.SetDocument(&document);
    m_renderer.SetDebugRendering(debugFrames);
    if (timeout > 0) {
        m_renderer.SetStopRequest([this] { return CheckTimeout(); });
    }
}

CGSize IconRenderer::PixelSize(CGSize size, double scale) const {
    const CGSize points = FittingSize(size, scale);
    return {points.width * scale, points.height * scale};
}

void IconRenderer::CheckViewPort() const {
    const CGSize own = m_renderer.ViewPortSize();
    if (!IsUsable(own.width) || !IsUsable(own.height)) {
        throw FileError("has the size " + DescribeSize(own) +
                        "; give its svg element a width and a height above 0, or a viewBox and neither");
    }
}

double IconRenderer::CheckSize(CGSize size, double scale) const {
    CheckViewPort();
    const CGSize pixels = PixelSize(size, scale);
    const double count = pixels.width * pixels.height;
    // Written so that NaN is refused as well.
    if (!(pixels.width <= kMaximumSide && pixels.height <= kMaximumSide && count <= kMaximumPixels)) {
        throw FileError("would make a picture of " + DescribeSize(pixels) + " pixels; the limit is " +
                        FormatNumber(kMaximumSide) + " on a side and " +
                        FormatCount(static_cast<uint64_t>(kMaximumPixels)) +
                        " in all; choose a smaller --width, --height or --scale");
    }
    return count;
}

bool IconRenderer::CheckTimeout() {
    // Wall-clock time is quick to read, but also passes while the thread waits; so processor time decides.
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_startTime;
    if (passed.count() > m_timeout && ThreadProcessorTime() - m_startProcessorTime > m_timeout)
        m_hasTimedOut = true;
    return m_hasTimedOut;
}

Bitmap IconRenderer::Draw(CGSize size, double scale) {
    m_startTime = std::chrono::steady_clock::now();
    m_startProcessorTime = ThreadProcessorTime();
    m_hasTimedOut = false;
    const CGImageRef image = CreateImage(size, scale);
    if (!image && m_hasTimedOut) {
        throw FileError("takes more than " + FormatNumber(m_timeout) +
                        " s to draw; choose a longer --timeout, or a smaller --width, --height or --scale");
    }
    // The size was checked, so memory must be short.
    if (!image) throw std::bad_alloc();
    return Bitmap(image);
}

CGImageRef IconRenderer::CreateImage(CGSize size, double scale) {
    // The renderer checks the time before each element, the drawing library while drawing one.
    bool (*const isDue)(void*) = [](void* self) { return static_cast<IconRenderer*>(self)->CheckTimeout(); };
    const DrawingInterrupt interrupt(m_timeout > 0 ? isDue : nullptr, this);
    return m_renderer.createCGImageFitToSize(size, scale, m_state, nullptr);
}

std::string SizeProblem(Document& document) {
    try {
        IconRenderer(document, kRenderingStateDefault, false, 0).CheckViewPort();
        return {};
    } catch (const FileError& error) {
        return error.what();
    }
}

} // namespace ozm::tool
