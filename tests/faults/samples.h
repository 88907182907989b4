// Sample drawings that use every kind of element and paint.
#pragma once

#include "owned.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace ozm::test {

struct Sample {
    std::string name;
    std::string text;
    std::string file; ///< Empty if the drawing is not in a file.

    friend std::ostream& operator<<(std::ostream& out, const Sample& sample) { return out << sample.name; }
};

/// The bundled examples and "crowded", which has long ids, many definitions, many stops and nested clips.
const std::vector<Sample>& Samples();

std::unique_ptr<Document> Parse(const std::string& text);

/// The default state, but with dashes.
const RenderingState& DashedState();

using Image = Owned<CGImageRef>;

/// Draws an image 48 pixels wide; null if that fails.
Image Draw(CoreGraphicsRenderer& renderer);
Image Draw(Document& document);

/// The bytes of an image; empty if there is none.
std::vector<uint8_t> PixelsOf(const Image& image);

} // namespace ozm::test
