// Files as the system has them: where they lie, how long their names may be, and which of them a living
// process owns. Each system has its own half of this.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

namespace tavdsrv {

// The longest name of a file, and the longest path, in the units of std::filesystem::path.
extern const std::size_t kLongestName;
extern const std::size_t kLongestPath;

// Where a file is, or is to be, by a path that SQLite takes: it has room for some 500 bytes.
class Place {
 public:
  // Follows links. Throws std::filesystem::filesystem_error if there is no such folder.
  explicit Place(const std::filesystem::path& file);

  const std::filesystem::path& folder() const { return folder_; }
  const std::filesystem::path& name() const { return name_; }
  std::filesystem::path file() const { return folder_ / name_; }

 private:
  std::filesystem::path folder_, name_;
  std::shared_ptr<void> open_folder_;  // keeps a short path of a folder good
};

// Makes an empty file that this process owns as long as it keeps what it gets, and lives; null if the name is
// taken. Throws std::system_error.
std::shared_ptr<void> make_owned(const std::filesystem::path& file);

// Removes a file that no living process owns, and the journal beside it. Leaves it where anything is in the
// way.
void remove_unowned(const std::filesystem::path& file) noexcept;

// A database's name with this behind it is that of its journal.
inline constexpr const char* kJournal = "-journal";

}  // namespace tavdsrv
