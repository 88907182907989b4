#include "backend.h"

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace bench {

namespace {

class QtSvgDrawing final : public Drawing {
public:
    explicit QtSvgDrawing(const std::string& text) : m_renderer(Bytes(text)) {
        m_renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    }

    bool IsValid() const { return m_renderer.isValid(); }

    bool Draw(unsigned size, void* pixels) override {
        const int side = static_cast<int>(size);
        QImage image(static_cast<uchar*>(pixels), side, side, side * 4, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        m_renderer.render(&painter, QRectF(0, 0, side, side));
        return painter.end();
    }

private:
    static QByteArray Bytes(const std::string& text) {
        return QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    }

    QSvgRenderer m_renderer;
};

std::unique_ptr<Drawing> Load(const std::string& text) {
    auto drawing = std::make_unique<QtSvgDrawing>(text);
    if (!drawing->IsValid()) return nullptr;
    return drawing;
}

bool Parse(const std::string& text) { return Load(text) != nullptr; }

} // namespace

const Backend kQtSvgBackend{"QtSvg", Parse, Load};

} // namespace bench
