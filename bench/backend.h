#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

/// A drawing that a backend has read and can draw again and again.
class Drawing {
public:
    virtual ~Drawing() = default;
    /// Overwrites `size` * `size` pixels of four bytes with the drawing, fitted and centred. False on
    /// failure.
    virtual bool Draw(unsigned size, void* pixels) = 0;
};

/// One way from SVG text to pixels: one file under backends/.
struct Backend {
    const char* name;
    /// Reads a drawing and throws it away. False on failure.
    bool (*parse)(const std::string& text);
    /// Reads a drawing; null on failure. Null itself where the backend doesn't draw.
    std::unique_ptr<Drawing> (*load)(const std::string& text);
};

/// The whole road: parser, document, renderer.
extern const Backend kOzmiraBackend;
/// The XML reader beneath the parser, alone: the floor for parsing.
extern const Backend kRapidXMLBackend;
#ifdef OZMIRA_BENCH_LIBRSVG
/// GNOME's renderer.
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
