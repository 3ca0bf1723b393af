// What the golden recordings show: the table cases.txt, and the program that draws a line of it.
#pragma once

#include <string>
#include <vector>

#include "support/program.h"

namespace golden {

// A recording: a product drawn with one setting.
struct Case {
  std::string class_id, object_id;
  std::string setting;                 // its name, "plain" without any options
  std::string database;                // how it stores texts: "utf8" or "narrow"
  std::vector<std::string> arguments;  // of the program: the command, and options behind the product

  // Path within a folder of recordings, without the ending.
  std::string path() const;
};

// The table. Throws std::runtime_error with the number of a line that is not as it should be.
std::vector<Case> read_cases(const std::string& file);

// The sample catalogue as databases of both ways to store texts, removed at the end.
class Catalogue {
 public:
  // Throws std::runtime_error with the program's words if it cannot be built.
  Catalogue();

  std::string database(const std::string& name) const;

  // Draws a case into a file, whose ending tells the form. Throws std::runtime_error with the program's
  // words.
  void draw(const Case& drawn, const std::string& file) const;

 private:
  void build(const std::string& name, const std::vector<std::string>& sources) const;
  clitest::Folder folder_;
};

}  // namespace golden
