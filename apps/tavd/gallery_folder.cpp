#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

#include "errors.h"
#include "gallery.h"
#include "paths.h"
#include "platform.h"
#include "text.h"
#include "whole_file.h"

namespace tavdhost {
namespace {

namespace fs = std::filesystem;

bool is_plain(unsigned char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

std::string safe(std::string_view text, bool with_dots) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (is_plain(byte) || (with_dots && c == '.')) {
      result += c;
    } else {
      std::array<char, 4> hex;
      std::snprintf(hex.data(), hex.size(), "_%02X", byte);
      result += hex.data();
    }
  }
  return result;
}

}  // namespace

std::string GalleryNames::name(const RecordKey& key) {
  // A class that begins with a dot would hide the file.
  const std::string plain = safe(key.class_id, false) + "-" + safe(key.object_id, true);
  std::string name = plain;
  // "_" and one digit is nothing that a byte becomes.
  for (int count = 2; !taken_.insert(lower(name)).second; ++count) {
    name = plain + "_" + std::to_string(count) + "_";
  }
  return name;
}

GalleryFolder::GalleryFolder(fs::path target) : target_(std::move(target)) {
  if (!target_.has_filename()) target_ = target_.parent_path();  // "sheet/"
  std::error_code error;
  const bool exists = fs::exists(target_, error);
  if (exists && !fs::is_directory(target_)) {
    throw UserError(in_quotes(to_text(target_)) + " is a file, expected a folder");
  }
  const std::string mark = ".unfinished-" + std::to_string(process_number());
  // In one file system with the target, so that the files can be moved.
  unfinished_ = exists ? target_ / mark : to_path(to_text(target_) + mark);
  fs::create_directories(unfinished_, error);
  if (error) throw cannot_write(to_text(target_), error.message());
}

GalleryFolder::~GalleryFolder() {
  std::error_code ignored;
  fs::remove_all(unfinished_, ignored);
}

std::string GalleryFolder::place(const std::string& name) {
  names_.push_back(name);
  return to_text(unfinished_ / name);
}

void GalleryFolder::write(const std::string& name, const std::string& bytes) {
  errno = 0;
  std::ofstream file(to_path(place(name)), std::ios::binary);
  file << bytes;
  file.close();
  if (!file) throw cannot_write(to_text(target_ / name), std::generic_category().message(errno));
}

void GalleryFolder::finish() {
  std::error_code error;
  if (!fs::exists(target_, error)) {
    fs::rename(unfinished_, target_, error);
    if (error) throw cannot_write(to_text(target_), error.message());
    return;
  }
  // Nothing is moved before everything can be.
  for (const std::string& name : names_) {
    if (fs::is_directory(target_ / name, error))
      throw cannot_write(to_text(target_ / name), "it is a folder");
  }
  for (const std::string& name : names_) {
    fs::rename(unfinished_ / name, target_ / name, error);
    if (error) throw cannot_write(to_text(target_ / name), error.message());
  }
}

}  // namespace tavdhost
