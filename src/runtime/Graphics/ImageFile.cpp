#include "runtime/Graphics/ImageFile.h"

#include <jpeglib.h>
#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

bool is_png(std::span<const uint8_t> b) { return b.size() >= 8 && png_sig_cmp(b.data(), 0, 8) == 0; }
bool is_jpeg(std::span<const uint8_t> b) { return b.size() >= 3 && b[0] == 0xFF && b[1] == 0xD8 && b[2] == 0xFF; }

bool decode_png(std::span<const uint8_t> bytes, Image& out) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, bytes.data(), bytes.size())) return false;
  image.format = PNG_FORMAT_RGBA;
  std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
  if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) {
    png_image_free(&image);
    return false;
  }
  out = {static_cast<int>(image.width), static_cast<int>(image.height), std::move(pixels)};
  return true;
}

// libjpeg reports errors through a callback that must not return: it jumps back here.
struct JpegError {
  jpeg_error_mgr manager;
  std::jmp_buf back;
};

[[noreturn]] void jpeg_fail(j_common_ptr info) { std::longjmp(reinterpret_cast<JpegError*>(info->err)->back, 1); }

// Decodes into `pixels`, which lives in the caller's frame: after a jump
// back, nothing of this frame that changed is used.
bool read_jpeg(std::span<const uint8_t> bytes, std::vector<uint8_t>& pixels, int& width, int& height) {
  jpeg_decompress_struct info{};
  JpegError error{};
  info.err = jpeg_std_error(&error.manager);
  error.manager.error_exit = jpeg_fail;
  if (setjmp(error.back)) {
    jpeg_destroy_decompress(&info);
    return false;
  }
  jpeg_create_decompress(&info);
  jpeg_mem_src(&info, bytes.data(), static_cast<unsigned long>(bytes.size()));
  jpeg_read_header(&info, TRUE);
  info.out_color_space = JCS_EXT_RGBA;
  jpeg_start_decompress(&info);
  pixels.resize(static_cast<size_t>(info.output_width) * 4 * info.output_height);
  while (info.output_scanline < info.output_height) {
    JSAMPROW line = pixels.data() + static_cast<size_t>(info.output_width) * 4 * info.output_scanline;
    jpeg_read_scanlines(&info, &line, 1);
  }
  jpeg_finish_decompress(&info);
  width = static_cast<int>(info.output_width);
  height = static_cast<int>(info.output_height);
  jpeg_destroy_decompress(&info);
  return true;
}

bool decode_jpeg(std::span<const uint8_t> bytes, Image& out) {
  std::vector<uint8_t> pixels;
  int width = 0, height = 0;
  if (!read_jpeg(bytes, pixels, width, height)) return false;
  out = {width, height, std::move(pixels)};
  return true;
}

}  // namespace

bool image_decode(std::span<const uint8_t> bytes, Image& out) {
  if (is_png(bytes)) return decode_png(bytes, out);
  if (is_jpeg(bytes)) return decode_jpeg(bytes, out);
  return false;
}

bool image_load(const std::string& path, Image& out) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  return image_decode(bytes, out);
}

bool image_save_png(const std::string& path, const Image& image) {
  if (image.width < 1 || image.height < 1 ||
      image.rgba.size() < static_cast<size_t>(image.width) * static_cast<size_t>(image.height) * 4) {
    return false;
  }
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = PNG_FORMAT_RGBA;
  const std::string part = path + ".part";
  if (!png_image_write_to_file(&png, part.c_str(), 0, image.rgba.data(), 0, nullptr)) {
    std::remove(part.c_str());
    return false;
  }
  std::error_code error;
  std::filesystem::rename(part, path, error);
  if (error) std::remove(part.c_str());
  return !error;
}
