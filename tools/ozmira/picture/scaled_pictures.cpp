#include "picture/scaled_pictures.h"

#include "base/tool_limits.h"

#include <algorithm>

namespace ozm::tool {

void ScaledPictures::Draw(IconRenderer& renderer, CGSize size, std::span<const double> scales,
                          const Sink& sink) {
    double largest = 0;
    for (const double scale : scales) largest = std::max(largest, renderer.CheckSize(size, scale));
    Turn turn(*this);
    turn.Expect(largest);
    for (size_t i = 0; i < scales.size(); ++i) {
        sink(i, renderer.Draw(size, scales[i]).Pixels());
    }
}

void ScaledPictures::Turn::Expect(double pixels) {
    if (pixels > kLargePicturePixels && !m_lock.owns_lock()) m_lock.lock();
}

} // namespace ozm::tool
