#include "filler.h"

#include <agg_conv_curve.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_scanline.h>
#include <agg_rendering_buffer.h>
#include <agg_scanline_u.h>

#include <cstring>

namespace bench {

namespace {

struct StorageSink {
    agg::path_storage& path;

    void MoveTo(ozm::TVec2<double> p) const { path.move_to(p.x, p.y); }
    void LineTo(ozm::TVec2<double> p) const { path.line_to(p.x, p.y); }
    void CurveTo(const ozm::BezierCurve& c) const {
        path.curve4(c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.end.x, c.end.y);
    }
    void Close() const { path.close_polygon(); }
};

class AGGSubject final : public FillSubject {
public:
    explicit AGGSubject(const Outlines& outlines) {
        m_paths.reserve(outlines.size());
        for (const ozm::Path& outline : outlines) SendSegments(outline, StorageSink{m_paths.emplace_back()});
    }

    void Fill(unsigned size, void* pixels) const override {
        const size_t rowBytes = size_t{size} * 4;
        std::memset(pixels, 0, rowBytes * size);
        agg::rendering_buffer buffer(static_cast<agg::int8u*>(pixels), size, size,
                                     static_cast<int>(rowBytes));
        agg::pixfmt_argb32_pre format(buffer);
        agg::renderer_base<agg::pixfmt_argb32_pre> renderer(format);
        // Kept between calls, as in an application.
        thread_local agg::rasterizer_scanline_aa<> rasterizer;
        thread_local agg::scanline_u8 scanline;
        rasterizer.clip_box(0, 0, size, size);
        for (agg::path_storage& path : m_paths) {
            agg::conv_curve<agg::path_storage> curves(path);
            rasterizer.reset();
            rasterizer.add_path(curves);
            agg::render_scanlines_aa_solid(rasterizer, scanline, renderer, agg::rgba8(0, 0, 0, 255));
        }
    }

private:
    mutable std::vector<agg::path_storage> m_paths; // Reading a path advances its own cursor.
};

std::unique_ptr<FillSubject> Convert(const Outlines& outlines) {
    return std::make_unique<AGGSubject>(outlines);
}

} // namespace

const Filler kAGGFiller{"AGG", Convert, 0};

} // namespace bench
