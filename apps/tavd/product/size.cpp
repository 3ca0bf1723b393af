#include "product/size.h"

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"

namespace tavdhost {
namespace {

constexpr int kMostMillimetres = 32767;

}  // namespace

DuctSize parse_size(const std::string& option, const std::string& text) {
  const std::size_t cross = text.find('x');
  const auto side = [&](const std::string& digits) {
    try {
      return static_cast<std::int16_t>(whole_number(option, digits, 1, kMostMillimetres));
    } catch (const UserError&) {
      throw UserError(option + " is " + in_quotes(text) +
                      ", expected a diameter such as 160 or a width and a height such as 400x200, in mm");
    }
  };
  const std::int16_t width = side(text.substr(0, cross));
  if (cross == std::string::npos) return {0, width, width};
  return {1, width, side(text.substr(cross + 1))};
}

}  // namespace tavdhost
