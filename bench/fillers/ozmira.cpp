#include "draw.h"
#include "filler.h"

#include <CoreGraphics/CoreGraphics.h>

namespace bench {

namespace {

struct PathRelease {
    void operator()(CGPathRef path) const { CGPathRelease(path); }
};
using OwnedPath = std::unique_ptr<CGPath, PathRelease>;

struct PathSink {
    CGMutablePathRef path;

    void MoveTo(ozm::TVec2<double> p) const { CGPathMoveToPoint(path, nullptr, p.x, p.y); }
    void LineTo(ozm::TVec2<double> p) const { CGPathAddLineToPoint(path, nullptr, p.x, p.y); }
    void CurveTo(const ozm::BezierCurve& c) const {
        CGPathAddCurveToPoint(path, nullptr, c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.end.x,
                              c.end.y);
    }
    void Close() const { CGPathCloseSubpath(path); }
};

class OzmiraSubject final : public FillSubject {
public:
    explicit OzmiraSubject(const Outlines& outlines) {
        for (const ozm::Path& outline : outlines) {
            m_paths.emplace_back(CGPathCreateMutable());
            SendSegments(outline, PathSink{m_paths.back().get()});
        }
    }

    void Fill(unsigned size, void* pixels) const override {
        CGContextRef context = CreateContext(size, pixels);
        CGContextSetRGBFillColor(context, 0, 0, 0, 1);
        for (const OwnedPath& path : m_paths) {
            CGContextAddPath(context, path.get());
            CGContextFillPath(context);
        }
        CGContextRelease(context);
    }

private:
    std::vector<OwnedPath> m_paths;
};

std::unique_ptr<FillSubject> Convert(const Outlines& outlines) {
    return std::make_unique<OzmiraSubject>(outlines);
}

} // namespace

const Filler kOzmiraFiller{"Ozmira", Convert, 0};

} // namespace bench
