#include "base/sheet.h"

#include <algorithm>

#include "base/text.h"

namespace tavdhost {

void Sheet::print(std::ostream& out) const {
  std::size_t name_width = 0;
  std::size_t number_width = 0;
  std::size_t unit_width = 0;
  for (const Line& line : lines_) {
    name_width = std::max(name_width, display_width(line.name));
    unit_width = std::max(unit_width, display_width(line.unit));
    if (line.is_number) number_width = std::max(number_width, display_width(line.value));
  }
  for (const Line& line : lines_) {
    std::string text = "  " + pad_right(line.name, name_width) + "  ";
    text += line.is_number ? pad_left(line.value, number_width) + " " + pad_right(line.unit, unit_width)
                           : line.value;
    if (!line.remark.empty()) text += "  " + line.remark;
    out << trim_end(text) << '\n';
  }
}

}  // namespace tavdhost
