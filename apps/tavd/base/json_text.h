// JSON as the commands write it.
#pragma once

#include <json/value.h>

#include <ostream>
#include <string>
#include <string_view>

namespace tavdhost {

// A float in the shortest digits that read back as the same float; null if it is no finite number.
Json::Value json_number(float value);

// A result code of the library, with what it means.
Json::Value code_json(int code, const char* text);

// A JSON string of valid UTF-8, with quotes; control characters are escaped.
std::string json_quoted(std::string_view utf8);

// Writes the value, indented by two, as UTF-8, and ends the line. Arrays of numbers or texts take one line;
// members stand in an order of their own, not by letter.
void write_json(std::ostream& out, const Json::Value& value);

}  // namespace tavdhost
