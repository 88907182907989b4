#include <Ozmira/OZMFitToSize.h>

#include <cmath>

namespace ozm {
namespace {

double RoundUpToPixels(double points, double scale) { return std::ceil(points * scale) / scale; }

} // namespace

CGSize FitToSize(CGSize viewPort, CGSize size) {
    if (!(size.width > 0) && !(size.height > 0)) return viewPort;
    const double scaleX = size.width / viewPort.width;
    if (size.height > 0) {
        const double scaleY = size.height / viewPort.height;
        if (!(scaleY > scaleX && size.width > 0)) return {scaleY * viewPort.width, size.height};
    }
    return {size.width, scaleX * viewPort.height};
}

CGSize FitToPixels(CGSize viewPort, CGSize size, double scale) {
    const CGSize fit = FitToSize(viewPort, size);
    return {RoundUpToPixels(fit.width, scale), RoundUpToPixels(fit.height, scale)};
}

} // namespace ozm
