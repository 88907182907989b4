#include "paint/image_grid.h"

#include "values/color.h"

#include <algorithm>
#include <cmath>

namespace ozcg {

PixelInterval::PixelInterval(double center, double half, int lowest, int end) {
    from = std::clamp(center - half, double(lowest), double(end));
    to = std::clamp(center + half, double(lowest), double(end));
    if (!(to - from > 1e-9)) {
        from = from > lowest ? end - 1 : lowest;
        to = from + 1;
    }
    first = floorClamped(from, lowest, end - 1);
    last = std::max(first, ceilClamped(to, lowest + 1, end) - 1);
}

double PixelInterval::weight(int i) const { return std::min(i + 1.0, to) - std::max(double(i), from); }

void ColorSum::add(uint32_t rgba, double weight) {
    r += weight * (rgba & 0xFF);
    g += weight * ((rgba >> 8) & 0xFF);
    b += weight * ((rgba >> 16) & 0xFF);
    a += weight * (rgba >> 24);
}

uint32_t ColorSum::over(double weight) const {
    const auto mean = [weight](double v) { return static_cast<uint32_t>(std::lround(v / weight)); };
    return pixelOf(mean(r), mean(g), mean(b), mean(a));
}

ImageGrid::ImageGrid(const CGImage& image, int width, int height, const IntRect& window) : m_window(window) {
    m_cells.resize(window.area());
    if (static_cast<size_t>(width) == image.width() && static_cast<size_t>(height) == image.height())
        readRows(image);
    else
        averageRows(image, width, height);
}

void ImageGrid::readRows(const CGImage& image) {
    const auto x0 = static_cast<size_t>(m_window.x0), n = static_cast<size_t>(m_window.width());
    for (int y = m_window.y0; y < m_window.y1; ++y) readRow(image, static_cast<size_t>(y), x0, n, row(y));
}

void ImageGrid::averageRows(const CGImage& image, int width, int height) {
    const auto pixelsOf = [](int cell, int cells, size_t pixels) {
        const double size = static_cast<double>(pixels) / cells;
        return PixelInterval((cell + 0.5) * size, 0.5 * size, 0, static_cast<int>(pixels));
    };
    std::vector<PixelInterval> columns;
    for (int x = m_window.x0; x < m_window.x1; ++x) columns.push_back(pixelsOf(x, width, image.width()));
    const int first = columns.front().first;
    std::vector<uint32_t> pixels(static_cast<size_t>(columns.back().last - first + 1));
    std::vector<ColorSum> sums(columns.size());
    for (int y = m_window.y0; y < m_window.y1; ++y) {
        std::fill(sums.begin(), sums.end(), ColorSum());
        const PixelInterval rows = pixelsOf(y, height, image.height());
        for (int from = rows.first; from <= rows.last; ++from) {
            readRow(image, static_cast<size_t>(from), static_cast<size_t>(first), pixels.size(),
                    pixels.data());
            const double weight = rows.weight(from);
            for (size_t i = 0; i < columns.size(); ++i)
                for (int x = columns[i].first; x <= columns[i].last; ++x)
                    sums[i].add(pixels[static_cast<size_t>(x - first)], weight * columns[i].weight(x));
        }
        for (size_t i = 0; i < columns.size(); ++i)
            row(y)[i] = sums[i].over(rows.length() * columns[i].length());
    }
}

} // namespace ozcg
