#include "backend.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cstdint>
#include <cstring>

namespace bench {

namespace {

struct ReleaseObject {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
};
using Handle = std::unique_ptr<RsvgHandle, ReleaseObject>;

class LibrsvgDrawing final : public Drawing {
public:
    explicit LibrsvgDrawing(Handle handle) : m_handle(std::move(handle)) {}

    bool Draw(unsigned size, void* pixels) override {
        const int side = static_cast<int>(size);
        std::memset(pixels, 0, size_t{size} * size * 4);
        cairo_surface_t* surface = cairo_image_surface_create_for_data(
            static_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32, side, side, side * 4);
        cairo_t* cairo = cairo_create(surface);
        const RsvgRectangle viewport{0, 0, double(side), double(side)};
        const bool done = rsvg_handle_render_document(m_handle.get(), cairo, &viewport, nullptr);
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
        return done;
    }

private:
    Handle m_handle;
};

Handle Read(const std::string& text) {
    return Handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(text.data()), text.size(), nullptr));
}

bool Parse(const std::string& text) { return Read(text) != nullptr; }

std::unique_ptr<Drawing> Load(const std::string& text) {
    Handle handle = Read(text);
    if (!handle) return nullptr;
    return std::make_unique<LibrsvgDrawing>(std::move(handle));
}

} // namespace

const Backend kLibrsvgBackend{"librsvg", Parse, Load};

} // namespace bench
