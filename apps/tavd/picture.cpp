#include "picture.h"

#include "errors.h"
#include "numbers.h"
#include "text.h"

namespace tavdhost {
namespace {

constexpr int kSmallestSide = 64;  // pixels

}  // namespace

PictureSize picture_size(const std::string& text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string::npos) {
    throw UserError("--size is " + in_quotes(text) + ", expected WIDTHxHEIGHT in pixels such as 1200x900");
  }
  return {whole_number("--size", std::string_view(text).substr(0, cross), kSmallestSide, kLargestSide),
          whole_number("--size", std::string_view(text).substr(cross + 1), kSmallestSide, kLargestSide)};
}

}  // namespace tavdhost
