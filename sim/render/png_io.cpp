// PNG files of pictures, through libpng.

#include <png.h>

#include <algorithm>
#include <cstdio>

#include "Renderer.h"

namespace xpsim::render {

namespace {

struct File {
    explicit File(FILE* f) : f(f) {}
    ~File() {
        if (f) std::fclose(f);
    }
    FILE* f;
};

}  // namespace

bool writePng(const std::string& path, const Image& image, std::string* error) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file.f) {
        *error = "cannot write " + path;
        return false;
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        *error = "cannot write " + path + " as PNG";
        return false;
    }
    png_init_io(png, file.f);
    png_set_IHDR(png, info, image.width, image.height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < image.height; ++y) png_write_row(png, image.at(0, y));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

bool readPng(const std::string& path, Image* image, std::string* error) {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file.f) {
        *error = "cannot read " + path;
        return false;
    }
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_read_struct(&png, &info, nullptr);
        *error = path + " is not a PNG file";
        return false;
    }
    png_init_io(png, file.f);
    // Any PNG becomes 8-bit RGB.
    png_read_png(png, info, PNG_TRANSFORM_STRIP_16 | PNG_TRANSFORM_PACKING | PNG_TRANSFORM_EXPAND |
                                PNG_TRANSFORM_STRIP_ALPHA | PNG_TRANSFORM_GRAY_TO_RGB, nullptr);
    image->width = static_cast<int>(png_get_image_width(png, info));
    image->height = static_cast<int>(png_get_image_height(png, info));
    image->rgb.resize(static_cast<size_t>(image->width) * image->height * 3);
    png_bytepp rows = png_get_rows(png, info);
    for (int y = 0; y < image->height; ++y)
        std::copy_n(rows[y], static_cast<size_t>(image->width) * 3, &image->rgb[static_cast<size_t>(y) * image->width * 3]);
    png_destroy_read_struct(&png, &info, nullptr);
    return true;
}

}  // namespace xpsim::render
