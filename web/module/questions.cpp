#include "questions.h"

#include "base/errors.h"
#include "base/text.h"

namespace tavdweb {
namespace {

using tavdhost::UserError;

struct Question {
  const char* name;
  Json::Value (*answer)(Session& session, const Json::Value& question);
};

constexpr Question kQuestions[] = {
    {"about", about},
    {"open", open_database},
    {"products", list_products},
    {"product", show_product},
    {"calculate", calculate},
    {"flow diagram", draw_flow_diagram},
    {"throw diagram", draw_throw_diagram},
    {"sketch", draw_sketch},
    {"select", select},
    {"select as csv", select_as_csv},
};

UserError wrong_type(const char* name, const char* expected) {
  return UserError{std::string(name) + " is not as expected: " + expected};
}

}  // namespace

Json::Value answer(Session& session, const Json::Value& question) {
  if (!question.isObject()) throw UserError("a question is an object with \"ask\"");
  const std::string name = text(question, "ask");
  for (const Question& known : kQuestions) {
    if (name == known.name) return known.answer(session, question);
  }
  throw UserError("no question " + tavdhost::in_quotes(name));
}

std::string text(const Json::Value& question, const char* name) {
  const Json::Value& value = question[name];
  if (value.isNull()) return {};
  if (!value.isString()) throw wrong_type(name, "a text");
  return value.asString();
}

std::vector<std::string> texts(const Json::Value& question, const char* name) {
  const Json::Value& list = question[name];
  if (!list.isNull() && !list.isArray()) throw wrong_type(name, "a list of texts");
  std::vector<std::string> all;
  for (const Json::Value& item : list) {
    if (!item.isString()) throw wrong_type(name, "a list of texts");
    all.push_back(item.asString());
  }
  return all;
}

bool flag(const Json::Value& question, const char* name) {
  const Json::Value& value = question[name];
  if (value.isNull()) return false;
  if (!value.isBool()) throw wrong_type(name, "true or false");
  return value.asBool();
}

tavdhost::ShownUnits shown_units(const Json::Value& question) {
  const std::string units = text(question, "units");
  return units.empty() ? tavdhost::ShownUnits() : tavdhost::parse_units("units", units);
}

tavdhost::Chosen chosen_product(Session& session, const Json::Value& question) {
  tavdhost::Chosen chosen = session.chooser().choose(text(question, "class"), text(question, "id"));
  tavdhost::set_parameters(chosen.product.flow, texts(question, "parameters"));
  return chosen;
}

}  // namespace tavdweb
