#pragma once

#include <Ozmira/ozmDocument.h>

#include <memory>
#include <string>

namespace ozm::tool {

/// A file's text and what the parser made of it.
struct Drawing {
    std::string text;
    std::unique_ptr<Document> document; ///< Never null; without elements when the text is no drawing.
};

/// Parses text. Throws `FileError` when it holds more than `kMaximumTags` tags or needs more memory than
/// there is.
Drawing ParseDrawing(std::string text);

/// Reads and parses a file, or standard input for "-". Throws `FileError` when it can't be read, holds more
/// than `kMaximumTags` tags or needs more memory than there is.
Drawing ReadDrawing(const std::string& path);

/// Why text gave a document without elements, and what to do about it: it is empty, nests too deep, is not
/// well-formed XML (with the place of the fault) or has no `svg` element.
std::string WhyNothingToDraw(const std::string& text);

/// As `ParseDrawing` and `ReadDrawing`, but throws `FileError` with the reason when there is nothing to draw.
Drawing ParseDrawingWithElements(std::string text);
Drawing ReadDrawingWithElements(const std::string& path);

} // namespace ozm::tool
