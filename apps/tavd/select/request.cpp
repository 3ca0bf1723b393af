#include "select/request.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "product/amount.h"
#include "product/operating_point.h"
#include "product/size.h"
#include "shared/records.h"

namespace tavdhost {
namespace {

using hosts::DutyWord;

constexpr DutyWord kAnswers[] = {{"size", TAVDN_UNKNOWN_SIZE},
                                 {"pressure", TAVDN_UNKNOWN_PRESSURE},
                                 {"sound", TAVDN_UNKNOWN_SOUND},
                                 {"throw", TAVDN_UNKNOWN_THROW}};

std::string names_of(std::span<const DutyWord> words) {
  std::string names;
  for (const DutyWord& word : words) names += (names.empty() ? "" : ", ") + std::string(word.name);
  return names;
}

UserError refusal(std::string_view name, std::string_view text, const std::string& expected) {
  return UserError{std::string(name) + " is " + in_quotes(text) + ", expected " + expected};
}

float number_in(std::string_view name, std::string_view text, float lowest, const std::string& expected) {
  float value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool is_whole = error == std::errc() && end == text.data() + text.size();
  if (!is_whole || !std::isfinite(value) || !(value >= lowest)) throw refusal(name, text, expected);
  return value;
}

std::vector<std::string> words_of(const std::string& text) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : text + ' ') {
    if (c != ' ' && c != ',') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::move(word));
      word.clear();
    }
  }
  return words;
}

unsigned value_of(std::string_view name, const std::string& text, std::span<const DutyWord> words) {
  const auto found =
      std::ranges::find_if(words, [&](const DutyWord& word) { return same_letters(word.name, text); });
  if (found == words.end()) throw refusal(name, text, "one of " + names_of(words));
  return found->value;
}

void refuse_upside_down(std::string_view name, const std::string& text, float low, float high) {
  if (low > high) throw refusal(name, text, "the lower end first");
}

// "400x200" with the height that a round size does not have left out.
DuctSize plain_size(std::string_view name, const std::string& text) {
  DuctSize size = parse_size(std::string(name), text);
  if (size.shape == TAVD_DUCT_ROUND) size.h = 0;
  return size;
}

}  // namespace

Request::Request() {
  duty.size = sizeof duty;
  duty.roomdamp = kRoomDamping;
  duty.wanted = kUsualHits;
}

void take_flow(std::string_view name, const std::string& text, Request& request) {
  const Amount amount = parse_flow(name, text);
  if (amount.unit != nullptr && amount.unit->quantity != hosts::Quantity::kFlow) {
    throw refusal(name, text, "a flow, in one of the units " + unit_names(hosts::Quantity::kFlow));
  }
  request.duty.qv =
      amount.unit == nullptr ? double{amount.plain} : hosts::to_base(amount.number, *amount.unit);
  request.has_flow = true;
}

void take_pressure(std::string_view name, const std::string& text, Request& request) {
  const std::size_t colon = text.find(':');
  const std::string highest = colon == std::string::npos ? text : text.substr(colon + 1);
  const float dp = parse_pressure(name, highest);
  float lowest = 0;
  if (colon != std::string::npos) {
    // The unit behind the last number is that of both.
    const std::string_view number =
        split_unit(name, highest, hosts::Quantity::kPressure, hosts::Quantity::kPressure).number;
    lowest = parse_pressure(name, text.substr(0, colon) + highest.substr(number.size()));
  }
  refuse_upside_down(name, text, lowest, dp);
  request.duty.dp = dp;
  request.duty.dp_lowest = lowest;
  request.has_pressure = true;
}

void take_lowest_pressure(std::string_view name, const std::string& text, Request& request) {
  request.duty.dp_lowest = parse_pressure(name, text);
}

void take_level(std::string_view name, const std::string& text, Request& request) {
  request.duty.lp_max = positive_number(name, text);
}

void take_damping(std::string_view name, const std::string& text, Request& request) {
  request.duty.roomdamp = parse_room_damping(name, text);
}

void take_bands(std::string_view name, const std::string& text, Request& request) {
  const std::vector<std::string> bands = words_of(text);
  const std::string expected =
      "8 levels in dB from 63 Hz to 8 kHz such as 50,45,40,38,36,35,35,35, \"-\" for any";
  if (bands.size() != TAVD_BANDS) throw refusal(name, text, expected);
  for (std::size_t band = 0; band < TAVD_BANDS; ++band) {
    request.duty.lw_max[band] = bands[band] == "-" ? 0 : number_in(name, bands[band], 1e-6F, expected);
  }
}

void take_throw(std::string_view name, const std::string& text, Request& request) {
  const std::string expected = "FROM:TO in m such as 2:4, 2: or :4";
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || text.size() == 1) throw refusal(name, text, expected);
  const std::string low = text.substr(0, colon);
  const std::string high = text.substr(colon + 1);
  request.duty.throw_min = low.empty() ? 0 : number_in(name, low, 0, expected);
  request.duty.throw_max = high.empty() ? 0 : number_in(name, high, 1e-6F, expected);
  if (!high.empty()) refuse_upside_down(name, text, request.duty.throw_min, request.duty.throw_max);
}

void take_shortest_throw(std::string_view name, const std::string& text, Request& request) {
  request.duty.throw_min = positive_number(name, text);
}

void take_longest_throw(std::string_view name, const std::string& text, Request& request) {
  request.duty.throw_max = positive_number(name, text);
}

void take_size(std::string_view name, const std::string& text, Request& request) {
  const std::size_t colon = text.find(':');
  const DuctSize low = plain_size(name, lower(text.substr(0, colon)));
  const DuctSize high = colon == std::string::npos ? low : plain_size(name, lower(text.substr(colon + 1)));
  if (low.shape != high.shape) throw refusal(name, text, "two sizes of one shape");
  refuse_upside_down(name, text, low.b, high.b);
  refuse_upside_down(name, text, low.h, high.h);
  request.duty.duct_min = low;
  request.duty.duct_max = high;
}

void take_classes(std::string_view name, const std::string& text, Request& request) {
  for (const std::string& word : words_of(text)) {
    if (word.size() > hosts::kClassChars) throw refusal(name, word, "classes of 3 characters");
    request.classes.push_back(hosts::padded_class(word));
  }
}

void take_rank(std::string_view name, const std::string& text, Request& request) {
  request.duty.rank = static_cast<std::int32_t>(value_of(name, text, hosts::rankings()));
}

void take_hits(std::string_view name, const std::string& text, Request& request) {
  request.duty.wanted = whole_number(name, text, 1, kMostHits);
}

void take_unknown(std::string_view name, const std::string& text, Request& request) {
  for (const std::string& word : words_of(text))
    request.duty.unknown_allowed |= value_of(name, word, kAnswers);
}

void take_parameter(std::string_view name, const std::string& text, Request& request) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) throw refusal(name, text, "NAME=VALUE");
  request.values[text.substr(0, equals)] = text.substr(equals + 1);
}

std::string rank_names() {
  return names_of(hosts::rankings());
}

std::string answer_names() {
  return names_of(kAnswers);
}

std::string answers_text(unsigned answers) {
  std::string text;
  for (const DutyWord& word : kAnswers) {
    if ((answers & word.value) != 0) text += (text.empty() ? "" : " ") + std::string(word.name);
  }
  return text;
}

}  // namespace tavdhost
