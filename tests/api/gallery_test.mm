// Runs the example program.
#include "api_test_support.h"

#import <UIKit/UIKit.h>

#include <fstream>
#include <spng.h>

namespace {

using GalleryTest = ApiTest;

int run(const std::string& command) { return WEXITSTATUS(std::system(command.c_str())); }

/// Width and height of a PNG file in pixels; zero if the file is not a PNG.
CGSize pngSize(NSURL* url) {
    NSData* const file = [NSData dataWithContentsOfURL:url];
    spng_ctx* decoder = spng_ctx_new(0);
    spng_set_png_buffer(decoder, file.bytes, file.length);
    spng_ihdr header{};
    spng_get_ihdr(decoder, &header);
    spng_ctx_free(decoder);
    return CGSizeMake(header.width, header.height);
}

TEST_F(GalleryTest, WritesEveryDocumentAtTwoScales) {
    write("in/wide.svg", redOverBlue(20, 10));
    write("in/plain.svg", kUnfilled);
    std::filesystem::create_directory(path("out"));
    const std::string command = std::string(OZMIRA_GALLERY) + " '" + path("in").string() + "' '" +
                                path("out").string() + "' > '" + path("log").string() + "' 2>&1";
    EXPECT_EQ(run(command), 0);
    struct {
        const char* file;
        CGSize size;
    } const expected[] = {{"wide@1x.png", {64, 32}},
                          {"wide@2x.png", {128, 64}},
                          {"plain@1x.png", {32, 32}},
                          {"plain@2x.png", {64, 64}}};
    for (const auto& test : expected)
        EXPECT_TRUE(CGSizeEqualToSize(pngSize(url(std::string("out/") + test.file)), test.size)) << test.file;
    write("in/broken.svg", "<svg");
    std::ofstream(path("in/not UTF-8 \xFF.svg")) << kUnfilled;
    std::filesystem::create_directory(path("in/folder.svg"));
    std::filesystem::remove(path("out/wide@1x.png"));
    EXPECT_EQ(run(command), 1);
    EXPECT_TRUE(std::filesystem::exists(path("out/wide@1x.png")));
    std::ifstream log(path("log"));
    const std::string said((std::istreambuf_iterator(log)), {});
    for (const char* line : {"broken: no picture\n", "folder: no picture\n"})
        EXPECT_NE(said.find(line), std::string::npos) << said;
    EXPECT_EQ(run(std::string(OZMIRA_GALLERY) + " 2> '" + path("log").string() + "'"), 2);
}

} // namespace
