// Files that are made under a name of their own before they get the one that is asked for.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "files.h"

namespace tavdsrv {

// A name for a draft of the file that is named so, both in UTF-8: a dot, the name's first bytes, a dot, 16
// random hexadecimal digits and ".tavd-new". `name` may be a path: the draft lies in the same folder.
std::string draft_name(const std::string& name);

// Removes the drafts of a file, and their journals, whose makers are no more.
void remove_dead_drafts(const Place& target) noexcept;

// An empty file beside `target`, this process's own. It goes with the object.
class Draft {
 public:
  explicit Draft(const Place& target);  // throws std::system_error
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Gives the file the target's name, unless there is such a file by now. To be called when all others in
  // this process have closed the file. False if both are missing after that.
  bool publish(std::error_code& problem);

 private:
  std::filesystem::path target_, path_;
  std::shared_ptr<void> owned_;
};

}  // namespace tavdsrv
