// Files for tests of the store: a folder of the test's own, whole files as bytes, snapshots of a folder.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace tavdtest {

namespace fs = std::filesystem;

class Folder {
 public:
  Folder() {
    static int serial = 0;
    path_ = fs::temp_directory_path() /
            ("tavd-storage-" + std::to_string(getpid()) + "-" + std::to_string(serial++));
    fs::remove_all(path_);
    fs::create_directory(path_);
  }
  ~Folder() {
    std::error_code ignored;
    fs::permissions(path_, fs::perms::owner_all, ignored);
    fs::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  fs::path operator/(const std::string& name) const { return path_ / name; }
  const fs::path& path() const { return path_; }

  // Name, bytes and time of change of everything in the folder.
  using Snapshot = std::map<std::string, std::pair<std::string, fs::file_time_type>>;
  Snapshot snapshot() const;

 private:
  fs::path path_;
};

// A path as the service tells it, on every system.
inline std::string utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

inline std::string read_file(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void write_file(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline Folder::Snapshot Folder::snapshot() const {
  Snapshot files;
  for (const auto& entry : fs::directory_iterator(path_)) {
    const bool file = entry.is_regular_file();
    files[entry.path().filename().string()] = {file ? read_file(entry.path()) : "", entry.last_write_time()};
  }
  return files;
}

}  // namespace tavdtest
