#include "drawing/picture.h"

#include "base/errors.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"

namespace tavdhost {
namespace {

constexpr int kSmallestSide = 64;  // pixels

// The platform's endings as --format takes them: "png, svg, pdf or txt".
std::string formats() {
  std::string text = kPictureForms.endings;
  std::erase(text, '.');
  return text;
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

std::string picture_ending(const std::string& path, const std::string& format) {
  return format.empty() ? lower(to_text(to_path(path).extension())) : '.' + lower(format);
}

UserError unknown_form(const std::string& path, const std::string& format) {
  if (!format.empty()) return UserError("--format is " + in_quotes(format) + ", expected " + formats());
  if (is_standard_output(path)) {
    return UserError("cannot tell what to write to standard output, expected --format with " + formats());
  }
  return UserError("cannot tell what to write into " + path_in_quotes(path) +
                   ", expected a name that ends in " + kPictureForms.endings + ", or --format");
}

}  // namespace tavdhost
