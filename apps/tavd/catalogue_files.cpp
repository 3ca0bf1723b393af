#include "catalogue_files.h"

#include <algorithm>
#include <random>

#include "errors.h"

namespace tavdhost {

namespace {

namespace fs = std::filesystem;

// What the database service may have left beside a file it was writing.
constexpr const char* kJournal = "-journal";

std::vector<std::string> files_in(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code problem;
  for (fs::directory_iterator at(to_path(folder), problem), end; !problem && at != end;
       at.increment(problem)) {
    if (at->path().extension() == ".json" && !fs::is_directory(at->path()))
      files.push_back(to_text(at->path()));
  }
  if (problem) throw UserError(folder + ": " + problem.message());
  if (files.empty()) throw UserError(folder + ": no *.json in this folder, expected the catalogue's sources");
  std::ranges::sort(files);
  return files;
}

}  // namespace

std::vector<std::string> source_files(const std::vector<std::string>& names) {
  std::vector<std::string> files;
  for (const std::string& name : names) {
    std::error_code problem;
    const fs::file_status status = fs::status(to_path(name), problem);
    if (!fs::exists(status)) throw UserError(name + ": no such file or folder, expected a source");
    const std::vector<std::string> found =
        fs::is_directory(status) ? files_in(name) : std::vector<std::string>{name};
    files.insert(files.end(), found.begin(), found.end());
  }
  return files;
}

Draft::Draft(const std::string& target) {
  std::error_code problem;
  const fs::path named = to_path(target);
  if (fs::is_directory(named, problem)) throw UserError(target + " is a folder, expected the name of a file");
  target_ =
      fs::weakly_canonical(fs::absolute(named), problem);  // a link stays, what it points to is replaced
  if (problem || !fs::is_directory(target_.parent_path(), problem)) {
    throw UserError(target + ": there is no folder " + to_text(target_.parent_path()));
  }
  std::random_device random;
  draft_ = target_;
  draft_ += ".new-" + std::to_string(random());
}

Draft::~Draft() {
  std::error_code ignored;
  fs::remove(draft_, ignored);
  fs::remove(to_path(path() + kJournal), ignored);
}

void Draft::finish() {
  std::error_code problem;
  if (fs::exists(target_, problem)) fs::permissions(draft_, fs::status(target_).permissions(), problem);
  fs::rename(draft_, target_, problem);
  if (problem) throw UserError(to_text(target_) + ": cannot be written: " + problem.message());
}

}  // namespace tavdhost
