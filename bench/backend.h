#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// A drawing that a backend has read and can draw repeatedly.
class Drawing {
public:
    virtual ~Drawing() = default;
    /// Overwrites `size` * `size` pixels of four bytes with the drawing, fitted and centred. Returns false on
    /// failure.
    virtual bool Draw(unsigned size, void* pixels) = 0;
};

/// A library that reads SVG text, and draws it unless `load` is null. Each has a file under backends/.
struct Backend {
    const char* name;
    /// Reads a drawing and discards it. Returns false on failure.
    bool (*parse)(const std::string& text);
    /// Reads a drawing. Returns null on failure. The pointer itself is null if the backend cannot draw.
    std::unique_ptr<Drawing> (*load)(const std::string& text);
};

/// Parser, document, renderer and drawing library.
extern const Backend kOzmiraBackend;
/// The XML reader that the parser uses, by itself: the lower bound for parsing.
extern const Backend kRapidXMLBackend;
#ifdef OZMIRA_BENCH_LIBRSVG
/// GNOME's SVG library.
extern const Backend kLibrsvgBackend;
#endif
#ifdef OZMIRA_BENCH_QTSVG
/// Qt's renderer of SVG Tiny 1.2.
extern const Backend kQtSvgBackend;
#endif

/// The backends of this build.
inline std::vector<const Backend*> Backends() {
    return {
        &kOzmiraBackend,
        &kRapidXMLBackend,
#ifdef OZMIRA_BENCH_LIBRSVG
        &kLibrsvgBackend,
#endif
#ifdef OZMIRA_BENCH_QTSVG
        &kQtSvgBackend,
#endif
    };
}

} // namespace bench
