// JSON as the commands write it.
#pragma once

#include <json/value.h>

#include <ostream>

namespace tavdhost {

// A float in the shortest digits that read back as the same float; null if it is no finite number.
Json::Value json_number(float value);

// Writes the value, indented by two, as UTF-8, and ends the line.
void write_json(std::ostream& out, const Json::Value& value);

}  // namespace tavdhost
