// What a user needs, as options and the cells of a schedule tell it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "shared/selection.h"
#include "tavd/tavdn_select.h"

namespace tavdhost {

// Parameters by name, with the chosen value; "*" stands for every value of the product's table.
using ChosenValues = std::map<std::string, std::string>;

using hosts::kMostHits;
using hosts::kUsualHits;

// The members that are texts are kept here: complete() hands them to the duty.
struct Request {
  Request();

  tavdn_duty duty{};
  std::vector<std::string> classes;  // 3 characters each
  ChosenValues values;
  bool has_flow = false;
  bool has_pressure = false;
};

// Each takes what a text says into the request. `name` is the option or the column. Throws UserError that
// says what was expected.
using Take = void (*)(std::string_view name, const std::string& text, Request& request);

void take_flow(std::string_view name, const std::string& text, Request& request);      // "80", "288m3/h"
void take_pressure(std::string_view name, const std::string& text, Request& request);  // "70", "40:70Pa"
void take_lowest_pressure(std::string_view name, const std::string& text, Request& request);
void take_level(std::string_view name, const std::string& text, Request& request);
void take_damping(std::string_view name, const std::string& text, Request& request);
void take_bands(std::string_view name, const std::string& text, Request& request);  // "50,45,-,..."
void take_throw(std::string_view name, const std::string& text, Request& request);  // "2:4", "2:", ":4"
void take_shortest_throw(std::string_view name, const std::string& text, Request& request);
void take_longest_throw(std::string_view name, const std::string& text, Request& request);
void take_size(std::string_view name, const std::string& text, Request& request);     // "160", "125:200"
void take_classes(std::string_view name, const std::string& text, Request& request);  // "DMP ASD"
void take_rank(std::string_view name, const std::string& text, Request& request);
void take_hits(std::string_view name, const std::string& text, Request& request);
void take_unknown(std::string_view name, const std::string& text, Request& request);    // "sound throw"
void take_parameter(std::string_view name, const std::string& text, Request& request);  // "NAME=VALUE"

// "sound, pressure, size, fit", and what may be unknown, for messages and help.
std::string rank_names();
std::string answer_names();
// Such as "sound throw"; empty for none.
std::string answers_text(unsigned answers);

}  // namespace tavdhost
