#include "whole_file.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "paths.h"
#include "text.h"

namespace tavdhost {

UserError cannot_write(const std::string& path, const std::string& reason) {
  return UserError("cannot write " + in_quotes(path) + ": " + printable(reason));
}

void write_whole_file(const std::string& path, const std::string& bytes) {
  const std::filesystem::path part = to_path(path + ".part");
  errno = 0;
  std::ofstream file(part, std::ios::binary);
  file << bytes;
  file.close();
  std::error_code error(file ? 0 : errno, std::generic_category());
  if (!error) std::filesystem::rename(part, to_path(path), error);
  if (!file || error) {
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    throw cannot_write(path, error ? error.message() : "the file could not be written whole");
  }
}

}  // namespace tavdhost
