#include "catalogue/files.h"

#include <algorithm>
#include <filesystem>

#include "base/errors.h"
#include "base/paths.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> files_in(const std::string& folder) {
  std::vector<std::string> files;
  std::error_code problem;
  for (fs::directory_iterator at(to_path(folder), problem), end; !problem && at != end;
       at.increment(problem)) {
    std::error_code none;
    if (at->path().extension() != ".json") continue;
    const fs::file_status status = fs::status(at->path(), none);
    if (fs::is_directory(status)) continue;
    if (fs::exists(status) && !fs::is_regular_file(status)) {
      throw UserError(to_text(at->path()) + ": a pipe, a socket or a device, expected a file with a source");
    }
    files.push_back(to_text(at->path()));
  }
  if (problem) throw UserError(folder + ": " + problem.message());
  if (files.empty()) throw UserError(folder + ": no *.json in this folder, expected the catalogue's sources");
  std::ranges::sort(files);
  return files;
}

// The system says that a path is too long, but not how long it may be: the service does.
[[noreturn]] void refuse_as_service(const std::string& target) {
  constexpr std::int32_t kCreate = 1;  // only then the service is asked for what is not there
  const std::int16_t handle = open_database_file(target, kCreate);
  if (handle >= 0) tavdsrv_closedatabase(handle);
  throw UserError(printable(tavdsrv_lasterror()));
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

void refuse_what_cannot_be_a_database(const std::string& target) {
  constexpr const char* kExpected = ", expected the name of a file";
  if (is_standard_output(target)) {
    throw UserError(std::string("a database cannot be written to standard output") + kExpected);
  }
  std::error_code problem;
  const fs::path path = to_path(target);
  const fs::file_status status = fs::status(fs::absolute(path, problem), problem);
  if (problem == std::errc::filename_too_long) refuse_as_service(target);
  if (fs::is_directory(status)) throw UserError(target + " is a folder" + kExpected);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw UserError(target + " is a pipe or a device, which cannot hold a database" + kExpected);
  }
  const fs::path folder = fs::absolute(path, problem).parent_path();
  if (fs::status(folder, problem).type() == fs::file_type::not_found) {
    throw UserError(target + ": there is no folder " + to_text(folder));
  }
}

}  // namespace tavdhost
