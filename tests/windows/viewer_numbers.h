// What the viewer's results must say, asked of the library anew.
#pragma once

#include <string>
#include <vector>

namespace drive {

struct Question {
  const char* class_id;
  const char* object_id;
  float qv, dp;           // l/s (m/s) and Pa
  const char* parameter;  // empty: none is chosen
  const char* value;
};

// Lines "label TAB value" that must stand in the results; none if the product is not in the database.
std::vector<std::wstring> expected_lines(const std::wstring& database, const Question& question);

}  // namespace drive
