#pragma once

#include <Ozmira/ozmElement.h>

#include <memory>
#include <string>

namespace ozm::tool {

/// A file's text and the document parsed from it.
struct Drawing {
    std::string text;
    std::unique_ptr<Document> document; ///< Never null; has no elements if the text is not a drawing.
};

/// Parses text. Throws `FileError` if it has more than `kMaximumTags` tags or needs more memory than there
/// is.
Drawing ParseDrawing(std::string text);

/// Reads and parses a file, or standard input for "-". Throws `FileError` if it can't be read, has more than
/// `kMaximumTags` tags or needs more memory than there is.
Drawing ReadDrawing(const std::string& path);

/// Explains why a text yields a document without elements, and what to do about it: the text is empty, nests
/// too deep, is not well-formed XML (with the position of the fault) or has no `svg` element.
std::string WhyNothingToDraw(const std::string& text);

/// Like `ParseDrawing` and `ReadDrawing`, but throw `FileError` with the reason if there is nothing to draw.
Drawing ParseDrawingWithElements(std::string text);
Drawing ReadDrawingWithElements(const std::string& path);

} // namespace ozm::tool
