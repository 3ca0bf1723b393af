#include "gui/cairo/picture_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace tavdcairo {

bool write_whole_file(const std::string& path, const std::string& bytes, std::string& reason) {
  const std::string unfinished = path + ".part";
  std::FILE* file = std::fopen(unfinished.c_str(), "wb");
  if (file == nullptr) {
    reason = path + ": " + std::strerror(errno);
    return false;
  }
  errno = 0;
  bool good = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  good = std::fclose(file) == 0 && good;
  good = good && std::rename(unfinished.c_str(), path.c_str()) == 0;
  if (!good) {
    reason = path + ": " + (errno != 0 ? std::strerror(errno) : "could not be written");
    std::remove(unfinished.c_str());
  }
  return good;
}

}  // namespace tavdcairo
