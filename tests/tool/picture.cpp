#include "picture.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>

namespace ozm::test {
namespace {

struct Reader {
    const std::string& file;
    size_t at = 0;
};

void ReadBytes(png_structp png, png_bytep bytes, size_t count) {
    auto& reader = *static_cast<Reader*>(png_get_io_ptr(png));
    if (count > reader.file.size() - reader.at) png_error(png, "the file is too short");
    std::memcpy(bytes, reader.file.data() + reader.at, count);
    reader.at += count;
}

[[noreturn]] void Fail(png_structp, png_const_charp message) { throw std::string(message); }

std::string DescribeFormat(png_structp png, png_infop info) {
    const auto type = png_get_color_type(png, info);
    return std::to_string(png_get_bit_depth(png, info)) + "-bit " +
           (type == PNG_COLOR_TYPE_PALETTE      ? "palette"
            : type == PNG_COLOR_TYPE_GRAY_ALPHA ? "gray and alpha"
            : type == PNG_COLOR_TYPE_RGB_ALPHA  ? "RGBA"
                                                : "other");
}

void ReadPicture(png_structp png, png_infop info, Picture& picture) {
    png_read_info(png, info);
    picture.width = png_get_image_width(png, info);
    picture.height = png_get_image_height(png, info);
    picture.format = DescribeFormat(png, info);
    picture.pixelsPerMetre = png_get_pixels_per_meter(png, info);
    png_set_expand(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
    std::vector<uint8_t> row(size_t{4} * picture.width);
    for (uint32_t y = 0; y < picture.height; ++y) {
        png_read_row(png, row.data(), nullptr);
        for (size_t i = 0; i < row.size(); i += 4) {
            picture.pixels.push_back(uint32_t{row[i]} << 24 | uint32_t{row[i + 1]} << 16 |
                                     uint32_t{row[i + 2]} << 8 | row[i + 3]);
        }
    }
    png_read_end(png, nullptr);
}

} // namespace

std::string Picture::Size() const { return std::to_string(width) + " x " + std::to_string(height); }

Picture DecodePNG(const std::string& file) {
    Picture picture;
    Reader reader{file};
    // Warnings of libpng, for example about a wrong checksum, also count as failures.
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Fail);
    png_infop info = png_create_info_struct(png);
    png_set_read_fn(png, &reader, ReadBytes);
    try {
        ReadPicture(png, info, picture);
    } catch (const std::string& message) {
        ADD_FAILURE() << "not a PNG file: " << message;
        picture = {};
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}

} // namespace ozm::test
