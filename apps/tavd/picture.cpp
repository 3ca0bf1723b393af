#include "picture.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "drawing_text.h"
#include "errors.h"
#include "numbers.h"
#include "tavdgui/tavdcairo.h"
#include "text.h"

namespace tavdhost {
namespace {

constexpr int kSmallestSide = 64;   // pixels
constexpr double kPageWidth = 297;  // A4 across, mm
constexpr double kPageHeight = 210;

tgui_surface* pdf_page(const char* path, PictureSize size) {
  const double scale = std::min(kPageWidth / size.width, kPageHeight / size.height);
  return tgui_cairo_pdf(path, size.width, size.height, size.width * scale, size.height * scale);
}

std::string ending_of(const std::string& path) {
  return lower(std::filesystem::path(path).extension().string());
}

UserError cannot_write(const std::string& path, const std::string& reason) {
  return UserError("cannot write " + in_quotes(path) + ": " + printable(reason));
}

}  // namespace

PictureSize picture_size(const std::string& text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string::npos) {
    throw UserError("--size is " + in_quotes(text) + ", expected WIDTHxHEIGHT in pixels such as 1200x900");
  }
  return {whole_number("--size", std::string_view(text).substr(0, cross), kSmallestSide, kLargestSide),
          whole_number("--size", std::string_view(text).substr(cross + 1), kSmallestSide, kLargestSide)};
}

Picture::Picture(const std::string& path, PictureSize size) : path_(path), size_(size) {
  const std::string ending = ending_of(path);
  is_recording_ = ending == ".txt";
  if (ending == ".png") {
    surface_ = tgui_cairo_png(path.c_str(), size.width, size.height);
  } else if (ending == ".svg") {
    surface_ = tgui_cairo_svg(path.c_str(), size.width, size.height);
  } else if (ending == ".pdf") {
    surface_ = pdf_page(path.c_str(), size);
  } else if (is_recording_) {
    surface_ = tgui_recording_create(size.width, size.height);
  } else {
    throw UserError("cannot tell what to write into " + in_quotes(path) +
                    ", expected a name that ends in .png, .svg, .pdf or .txt");
  }
  if (surface_ == nullptr) throw cannot_write(path, "no picture of this size can be made");
}

Picture::~Picture() {
  tgui_surface_destroy(surface_);
}

void Picture::describe(const DrawingText& text) {
  tgui_cairo_describe(surface_, text.title.c_str(), text.description.c_str());
}

void Picture::finish() {
  if (is_recording_) {
    finish_recording();
    return;
  }
  char reason[300] = {};
  const bool written = tgui_cairo_finish(surface_, reason, sizeof reason) == 0;
  surface_ = nullptr;
  if (!written) throw cannot_write(path_, reason);
}

void Picture::finish_recording() {
  const std::string part = path_ + ".part";
  errno = 0;
  std::ofstream file(part, std::ios::binary);
  file << tgui_recording_text(surface_);
  file.close();
  std::error_code error(file ? 0 : errno, std::generic_category());
  if (!error) std::filesystem::rename(part, path_, error);
  if (!file || error) {
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    throw cannot_write(path_, error ? error.message() : "the file could not be written whole");
  }
}

}  // namespace tavdhost
