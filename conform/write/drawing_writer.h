#pragma once

#include "scene/scene.h"
#include "source/document.h"

#include <OzmiraConform/OzmiraConform.h>

#include <string>
#include <vector>

namespace ozm::conform {

/// The text of a drawing for Ozmira: the frame of the scene with these shapes. Licence comments and the title
/// of the document stay. Empty when it would be larger than what is read.
std::string WriteDrawing(const Document& document, const Scene& scene, const std::vector<Shape>& shapes,
                         const Options& options);

} // namespace ozm::conform
