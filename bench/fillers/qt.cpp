#include "filler.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <bit>

namespace bench {

namespace {

struct PathSink {
    QPainterPath& path;

    static QPointF PointOf(ozm::TVec2<double> p) { return {p.x, p.y}; }
    void MoveTo(ozm::TVec2<double> p) const { path.moveTo(PointOf(p)); }
    void LineTo(ozm::TVec2<double> p) const { path.lineTo(PointOf(p)); }
    void CurveTo(const ozm::BezierCurve& c) const {
        path.cubicTo(PointOf(c.control1), PointOf(c.control2), PointOf(c.end));
    }
    void Close() const { path.closeSubpath(); }
};

class QtSubject final : public FillSubject {
public:
    explicit QtSubject(const Outlines& outlines) : m_paths(outlines.size()) {
        for (size_t i = 0; i < outlines.size(); ++i) {
            m_paths[i].setFillRule(Qt::WindingFill);
            SendSegments(outlines[i], PathSink{m_paths[i]});
        }
    }

    void Fill(unsigned size, void* pixels) const override {
        const int side = static_cast<int>(size);
        QImage image(static_cast<uchar*>(pixels), side, side, side * 4, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const QPainterPath& path : m_paths) painter.fillPath(path, Qt::black);
    }

private:
    std::vector<QPainterPath> m_paths;
};

std::unique_ptr<FillSubject> Convert(const Outlines& outlines) {
    return std::make_unique<QtSubject>(outlines);
}

} // namespace

const Filler kQtFiller{"Qt", Convert, std::endian::native == std::endian::little ? 3 : 0};

} // namespace bench
