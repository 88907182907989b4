// Loads the yardstick module as a benchmark harness would, and checks its symbols and what it draws.
#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

int failures = 0;

void Check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "yardstick module: %s\n", what);
    ++failures;
}

} // namespace

int main(int, char** argv) {
    void* module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (!module) return std::fprintf(stderr, "%s\n", dlerror()), 1;
    const auto parse = reinterpret_cast<int (*)(const char*)>(dlsym(module, "ozmira_bench_parse"));
    const auto render =
        reinterpret_cast<int (*)(const char*, unsigned, void*)>(dlsym(module, "ozmira_bench_render"));
    if (!parse || !render) return std::fprintf(stderr, "%s\n", dlerror()), 1;
    Check(!dlsym(module, "_ZN3ozm9SVGParser12ParseSVGDataEPc"), "exports more than its two functions");

    // Twice as wide as high: a red bar above a blue one, centred from row 4 to row 12 of 16.
    const char* const text = "<svg width='4' height='2'><rect width='4' height='1' fill='red'/>"
                             "<rect y='1' width='4' height='1' fill='blue'/></svg>";
    Check(parse(text) == 0, "does not parse a drawing");
    Check(parse("<svg") != 0, "parses malformed text without an error");

    constexpr size_t side = 16;
    std::vector<uint8_t> pixels(side * side * 4, 0x55);
    Check(render("<svg", side, pixels.data()) != 0, "draws malformed text without an error");
    Check(render(text, side, pixels.data()) == 0, "does not draw");
    const auto pixelIs = [&](unsigned x, unsigned y, std::vector<uint8_t> argb) {
        return std::equal(argb.begin(), argb.end(), pixels.begin() + (y * side + x) * 4);
    };
    Check(pixelIs(3, 1, {0, 0, 0, 0}) && pixelIs(3, 14, {0, 0, 0, 0}), "does not clear around the drawing");
    Check(pixelIs(0, 4, {255, 255, 0, 0}) && pixelIs(15, 7, {255, 255, 0, 0}), "misplaces the upper bar");
    Check(pixelIs(0, 8, {255, 0, 0, 255}) && pixelIs(15, 11, {255, 0, 0, 255}), "misplaces the lower bar");
    return failures;
}
