// Files as the system has them: where they lie, and how long their names may be. Each system has its own half
// of this.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace tavdsrv {

// A path as SQLite takes it and messages show it, and back.
inline std::string utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}
inline std::filesystem::path from_utf8(const std::string& text) {
  return std::u8string(text.begin(), text.end());
}

// The longest name of a file, and the longest path, in the units of std::filesystem::path.
extern const std::size_t kLongestName;
extern const std::size_t kLongestPath;

// Where a file is, or is to be, by a path that SQLite takes: it has room for some 500 bytes.
class Place {
 public:
  // Follows links. Throws std::system_error if there is no such folder.
  explicit Place(const std::filesystem::path& file);

  const std::filesystem::path& folder() const { return folder_; }
  const std::filesystem::path& name() const { return name_; }
  std::filesystem::path file() const { return folder_ / name_; }

 private:
  std::filesystem::path folder_, name_;
  std::shared_ptr<void> open_folder_;  // keeps a short path of a folder good
};

// A database's name with this behind it is that of its journal.
inline constexpr const char* kJournal = "-journal";

}  // namespace tavdsrv
