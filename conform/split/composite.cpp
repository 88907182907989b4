// Mixing the colours of translucent shapes that overlap.
#include "geometry/area.h"
#include "split/areas.h"
#include "split/splitter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ozm::conform {
namespace {

/// More pieces than this take too long, and look no better than a refusal.
constexpr size_t kMostPieces = 200;

/// An area of one colour; the components are multiplied by the alpha.
struct Piece {
    Path area;
    double r = 0, g = 0, b = 0, alpha = 0;
};

/// Paints shapes over each other and keeps the areas apart that come to show different colours.
class Compositor {
public:
    explicit Compositor(double tolerance) : m_tolerance(tolerance) {}

    void Paint(const Path& area, const Color& color, double opacity) {
        const double alpha = color.alpha * opacity;
        std::vector<Piece> pieces;
        Path rest = area;
        for (Piece& piece : m_pieces) {
            Path both = Combine(AreaOperation::Intersection, {piece.area}, {area}, m_tolerance);
            if (both.IsEmpty()) {
                pieces.push_back(std::move(piece));
                continue;
            }
            rest = Combine(AreaOperation::Difference, {rest}, {piece.area}, m_tolerance);
            Path outside = Combine(AreaOperation::Difference, {piece.area}, {area}, m_tolerance);
            Piece mixed = Over(color, alpha, piece);
            mixed.area = std::move(both);
            piece.area = std::move(outside);
            if (!piece.area.IsEmpty()) pieces.push_back(std::move(piece));
            pieces.push_back(std::move(mixed));
        }
        if (!rest.IsEmpty()) {
            Piece fresh = Over(color, alpha, {});
            fresh.area = std::move(rest);
            pieces.push_back(std::move(fresh));
        }
        m_pieces = std::move(pieces);
    }

    std::vector<Piece>& Pieces() { return m_pieces; }

private:
    static Piece Over(const Color& color, double alpha, const Piece& below) {
        const double rest = 1 - alpha;
        return {{},
                color.r * alpha + below.r * rest,
                color.g * alpha + below.g * rest,
                color.b * alpha + below.b * rest,
                alpha + below.alpha * rest};
    }

    double m_tolerance;
    std::vector<Piece> m_pieces;
};

} // namespace

bool Splitter::Composite(std::vector<Shape>& shapes) {
    const double tolerance = m_scene.Tolerance() / 4;
    Compositor compositor(tolerance);
    for (const Shape& shape : shapes) {
        for (const bool isFill : {true, false}) {
            const Paint& paint = isFill ? shape.fill : shape.stroke;
            if (!paint) continue;
            if (paint.kind != Paint::Kind::Color || compositor.Pieces().size() > kMostPieces) return false;
            compositor.Paint(isFill ? FillArea(shape, tolerance) : StrokeArea(shape, tolerance), paint.color,
                             shape.opacity);
        }
    }
    std::vector<Shape> mixed;
    for (Piece& piece : compositor.Pieces()) {
        if (!(piece.alpha > 0)) continue;
        const auto byte = [&](double value) {
            return static_cast<uint8_t>(std::lround(value / piece.alpha));
        };
        const Color color{byte(piece.r), byte(piece.g), byte(piece.b), piece.alpha};
        Shape shape = FilledWith(shapes.front(), std::move(piece.area), Paint::Of(color));
        shape.clip = nullptr;
        shape.opacity = 1;
        mixed.push_back(std::move(shape));
    }
    shapes = std::move(mixed);
    return true;
}

} // namespace ozm::conform
