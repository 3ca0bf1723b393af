// Questions about operating points.
#include <charconv>
#include <cmath>
#include <optional>

#include "base/errors.h"
#include "base/text.h"
#include "commands/calc_json.h"
#include "commands/calculated.h"
#include "questions.h"
#include "shared/numbers.h"

namespace tavdweb {
namespace {

float room_damping(const Json::Value& question) {
  const std::string given = text(question, "room_damping");
  if (given.empty()) return tavdhost::kRoomDamping;
  float value = 0;
  const auto [end, error] = std::from_chars(given.data(), given.data() + given.size(), value);
  if (error == std::errc() && end == given.data() + given.size() && std::isfinite(value)) return value;
  throw tavdhost::UserError("room damping is " + tavdhost::in_quotes(given) + ", expected " +
                            hosts::kExpectedDecibels);
}

}  // namespace

Json::Value calculate(Session& session, const Json::Value& question) {
  const tavdhost::AnswerForm form{shown_units(question), room_damping(question)};
  const tavdhost::Amount qv = tavdhost::parse_flow("flow", text(question, "qv"));
  std::optional<float> dp;
  if (const std::string given = text(question, "dp"); !given.empty()) {
    dp = tavdhost::parse_pressure("pressure", given);
  }
  tavdhost::Chosen chosen = chosen_product(session, question);
  tavdhost::settle_end_reflection(chosen, flag(question, "end_reflection"));
  return tavdhost::calculated_json(tavdhost::calculate(std::move(chosen), qv, dp, form), form);
}

}  // namespace tavdweb
