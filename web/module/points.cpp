// Questions about operating points.
#include <optional>

#include "answers/calculated.h"
#include "answers/calculated_json.h"
#include "questions.h"

namespace tavdweb {

Json::Value calculate(Session& session, const Json::Value& question) {
  const tavdhost::AnswerForm form{
      shown_units(question), tavdhost::parse_room_damping("room damping", text(question, "room_damping"))};
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
