// JSON that the program writes.
#pragma once

#include <gtest/gtest.h>
#include <json/reader.h>
#include <json/value.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/program.h"

namespace clitest {

inline Json::Value parse_json(const std::string& text) {
  Json::Value json;
  std::istringstream stream(text);
  std::string errors;
  EXPECT_TRUE(Json::parseFromStream(Json::CharReaderBuilder(), stream, &json, &errors)) << errors << text;
  return json;
}

// What the command answers with --json; it succeeds and says nothing else.
inline Json::Value run_json(std::vector<std::string> arguments) {
  arguments.emplace_back("--json");
  const Outcome outcome = run_program(arguments);
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  return parse_json(outcome.out);
}

// Standard output of a command that succeeds and says nothing else.
inline std::string run_text(const std::vector<std::string>& arguments) {
  const Outcome outcome = run_program(arguments);
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  return outcome.out;
}

// The texts of a JSON array.
inline std::vector<std::string> texts_of(const Json::Value& array) {
  std::vector<std::string> texts;
  for (const Json::Value& item : array) texts.push_back(item.asString());
  return texts;
}

}  // namespace clitest
