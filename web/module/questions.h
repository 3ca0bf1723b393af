// The questions that the page asks, each an object with "ask" and its arguments; web/package/src/questions.ts
// tells them as types. Arguments are texts as on the command line: "288m3/h", "0.2in.wg", "G=45".
#pragma once

#include <json/value.h>

#include "session.h"

namespace tavdweb {

// Throws UserError for what cannot be asked or answered.
Json::Value answer(Session& session, const Json::Value& question);

// The questions, one function each, in the files of their subjects.
Json::Value open_database(Session& session, const Json::Value& question);
Json::Value about(Session& session, const Json::Value& question);
Json::Value list_products(Session& session, const Json::Value& question);
Json::Value show_product(Session& session, const Json::Value& question);
Json::Value calculate(Session& session, const Json::Value& question);
Json::Value draw_flow_diagram(Session& session, const Json::Value& question);
Json::Value draw_throw_diagram(Session& session, const Json::Value& question);
Json::Value draw_sketch(Session& session, const Json::Value& question);
Json::Value select(Session& session, const Json::Value& question);
Json::Value select_as_csv(Session& session, const Json::Value& question);

// The argument as text, empty where it is missing; its items; whether it is true. Throw UserError for another
// type.
std::string text(const Json::Value& question, const char* name);
std::vector<std::string> texts(const Json::Value& question, const char* name);
bool flag(const Json::Value& question, const char* name);

// What all questions about numbers may say: "units" and "room_damping".
tavdhost::ShownUnits shown_units(const Json::Value& question);

// The product that "class", "id" and "parameters" name.
tavdhost::Chosen chosen_product(Session& session, const Json::Value& question);

}  // namespace tavdweb
