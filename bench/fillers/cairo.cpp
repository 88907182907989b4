#include "filler.h"

#include <cairo.h>

#include <bit>
#include <cstring>

namespace bench {

namespace {

/// Writes a path as Cairo stores it: a header before each segment's points.
struct DataSink {
    std::vector<cairo_path_data_t>& data;

    void Begin(cairo_path_data_type_t type, int length) const {
        cairo_path_data_t header{};
        header.header.type = type;
        header.header.length = length;
        data.push_back(header);
    }
    void Point(ozm::TVec2<double> p) const {
        cairo_path_data_t point{};
        point.point.x = p.x;
        point.point.y = p.y;
        data.push_back(point);
    }
    void MoveTo(ozm::TVec2<double> p) const {
        Begin(CAIRO_PATH_MOVE_TO, 2);
        Point(p);
    }
    void LineTo(ozm::TVec2<double> p) const {
        Begin(CAIRO_PATH_LINE_TO, 2);
        Point(p);
    }
    void CurveTo(const ozm::BezierCurve& c) const {
        Begin(CAIRO_PATH_CURVE_TO, 4);
        Point(c.control1);
        Point(c.control2);
        Point(c.end);
    }
    void Close() const { Begin(CAIRO_PATH_CLOSE_PATH, 1); }
};

class CairoSubject final : public FillSubject {
public:
    explicit CairoSubject(const Outlines& outlines) : m_paths(outlines.size()) {
        for (size_t i = 0; i < outlines.size(); ++i) SendSegments(outlines[i], DataSink{m_paths[i]});
    }

    void Fill(unsigned size, void* pixels) const override {
        const int side = static_cast<int>(size);
        std::memset(pixels, 0, size_t{size} * size * 4);
        cairo_surface_t* surface = cairo_image_surface_create_for_data(
            static_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32, side, side, side * 4);
        cairo_t* cairo = cairo_create(surface);
        cairo_set_source_rgb(cairo, 0, 0, 0);
        for (const auto& data : m_paths) {
            // Cairo only reads the data.
            const cairo_path_t path{CAIRO_STATUS_SUCCESS, const_cast<cairo_path_data_t*>(data.data()),
                                    static_cast<int>(data.size())};
            cairo_append_path(cairo, &path);
            cairo_fill(cairo);
        }
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
    }

private:
    std::vector<std::vector<cairo_path_data_t>> m_paths;
};

std::unique_ptr<FillSubject> Convert(const Outlines& outlines) {
    return std::make_unique<CairoSubject>(outlines);
}

} // namespace

const Filler kCairoFiller{"Cairo", Convert, std::endian::native == std::endian::little ? 3 : 0};

} // namespace bench
