// Names, values and units under each other, as the commands print a product.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace tavdhost {

// Lines of a name, a value with its unit, and a remark.
class Sheet {
 public:
  void text(const std::string& name, const std::string& value) {
    lines_.push_back({name, value, "", "", false});
  }
  void number(const std::string& name, const std::string& value, const std::string& unit,
              const std::string& remark = "") {
    lines_.push_back({name, value, unit, remark, true});
  }
  void print(std::ostream& out) const;

 private:
  struct Line {
    std::string name, value, unit, remark;
    bool is_number;
  };
  std::vector<Line> lines_;
};

}  // namespace tavdhost
