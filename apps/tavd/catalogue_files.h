// Files of the catalogue's commands: the sources that were named, and results that appear whole or not at
// all.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "paths.h"

namespace tavdhost {

// The files that the user named; a folder stands for all *.json in it, by name. Throws UserError for a name
// that is neither, and for a folder without any.
std::vector<std::string> source_files(const std::vector<std::string>& names);

// A new file beside its target, which takes the target's place when it is finished and is removed otherwise.
class Draft {
 public:
  // Throws UserError if the target cannot be a file: a folder, or a name in no folder.
  explicit Draft(const std::string& target);
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  // Where to write; the file is not there yet.
  std::string path() const { return to_text(draft_); }

  // Puts the draft in the target's place. Throws UserError if that cannot be done.
  void finish();

 private:
  std::filesystem::path target_;
  std::filesystem::path draft_;
};

}  // namespace tavdhost
