#include "program/golden/cases.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace golden {
namespace {

constexpr const char* kCatalogue = TAVD_SOURCE_DIR "/catalogue";
constexpr const char* kNarrowHeader = TAVD_SOURCE_DIR "/tests/program/golden/narrow.json";
constexpr const char* kHeader = "fileheader.json";
constexpr std::array kDatabases = {"utf8", "narrow"};
constexpr std::array kCommands = {"diagram", "throw", "picture", "report"};

// An id as part of a file name on any system.
std::string file_name(const std::string& id) {
  std::string name;
  for (const char character : id) {
    if (character == '*') {
      name += "any";
    } else {
      name += character == '/' ? '_' : character;
    }
  }
  return name;
}

Case read_case(const std::string& line) {
  std::istringstream words(line);
  Case read;
  words >> read.class_id >> read.object_id >> read.setting >> read.database;
  for (std::string word; words >> std::quoted(word);) read.arguments.push_back(word);
  if (read.arguments.empty() || std::ranges::count(kCommands, read.arguments[0]) == 0) {
    throw std::runtime_error("expected class, id, setting, database, and diagram, throw, picture or report");
  }
  if (std::ranges::count(kDatabases, read.database) == 0) {
    throw std::runtime_error("expected utf8 or narrow, found " + read.database);
  }
  return read;
}

void run(const std::vector<std::string>& arguments) {
  const clitest::Outcome outcome = clitest::run_program(arguments);
  if (outcome.exit_code != 0) throw std::runtime_error(outcome.err);
}

}  // namespace

std::string Case::path() const {
  return class_id + "/" + file_name(object_id) + "." + setting;
}

std::vector<Case> read_cases(const std::string& file) {
  std::ifstream table(file);
  if (!table) throw std::runtime_error("cannot read " + file);
  std::vector<Case> cases;
  int number = 0;
  for (std::string line; std::getline(table, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    try {
      cases.push_back(read_case(line));
    } catch (const std::runtime_error& problem) {
      throw std::runtime_error(file + ":" + std::to_string(number) + ": " + problem.what());
    }
  }
  return cases;
}

Catalogue::Catalogue() {
  std::vector<std::string> sources;
  for (const auto& entry : std::filesystem::directory_iterator(kCatalogue)) {
    if (entry.path().extension() == ".json" && entry.path().filename() != kHeader) {
      sources.push_back(entry.path());
    }
  }
  std::ranges::sort(sources);
  build("utf8", {kCatalogue});
  sources.emplace_back(kNarrowHeader);
  build("narrow", sources);
}

std::string Catalogue::database(const std::string& name) const {
  return folder_.file(name + ".tavdb");
}

void Catalogue::draw(const Case& drawn, const std::string& file) const {
  std::vector<std::string> arguments = {
      drawn.arguments[0], database(drawn.database), drawn.class_id, drawn.object_id, "-o", file};
  arguments.insert(arguments.end(), drawn.arguments.begin() + 1, drawn.arguments.end());
  run(arguments);
}

void Catalogue::build(const std::string& name, const std::vector<std::string>& sources) const {
  std::vector<std::string> arguments = {"db", "build", "-o", database(name)};
  arguments.insert(arguments.end(), sources.begin(), sources.end());
  run(arguments);
}

}  // namespace golden
