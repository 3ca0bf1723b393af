// The functions that JavaScript calls beside those of the libraries: a question as JSON text, its answer as
// JSON text.
#include <json/reader.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "base/errors.h"
#include "base/json_text.h"
#include "base/text.h"
#include "questions.h"

namespace tavdweb {
namespace {

Json::Value parsed(const char* question) {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::Value value;
  std::string problems;
  if (!reader->parse(question, question + std::strlen(question), &value, &problems)) {
    throw tavdhost::UserError("a question is JSON: " + tavdhost::printable(problems));
  }
  return value;
}

// {"answer": ...} or {"error": "..."}.
Json::Value reply_to(const char* question) {
  static Session session;
  Json::Value reply;
  try {
    reply["answer"] = answer(session, parsed(question));
  } catch (const std::exception& error) {
    reply["error"] = tavdhost::printable(error.what());
  }
  return reply;
}

}  // namespace
}  // namespace tavdweb

extern "C" {

// Both texts are UTF-8. The answer is valid until the next question.
const char* tavdweb_answer(const char* question) {
  static std::string text;
  std::ostringstream out;
  tavdhost::write_json(out, tavdweb::reply_to(question));
  text = out.str();
  return text.c_str();
}
}
