// The folder of a gallery and the names of the files in it.
#include <array>
#include <cstdio>
#include <system_error>
#include <utility>

#include "base/errors.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "gallery/gallery.h"

namespace tavdhost {
namespace {

namespace fs = std::filesystem;

constexpr const char* kInside = "gallery";  // names the draft in a folder that is there

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
    throw UserError(path_in_quotes(to_text(target_)) + " is a file, expected a folder");
  }
  if (exists) {
    drafts::clear(target_);  // of when there was no such folder
  } else if (target_.has_parent_path()) {
    fs::create_directories(target_.parent_path(), error);
    if (error) throw cannot_write(to_text(target_), error.message());
  }
  // In one file system with the target, so that the files can be moved.
  draft_ = std::make_unique<drafts::Folder>(exists ? target_ / kInside : target_,
                                            drafts::Folder::Use::kBecomesTarget);
  if (!draft_->reason().empty()) throw cannot_write(to_text(target_), draft_->reason());
}

GalleryFolder::~GalleryFolder() = default;

std::string GalleryFolder::draft_of(const std::string& name) const {
  return to_text(draft_->path() / name);
}

UserError GalleryFolder::named_in_place(const UserError& error) const {
  return without_draft(error, to_text(draft_->path()), to_text(target_));
}

void GalleryFolder::finish() {
  std::error_code error;
  if (!fs::exists(target_, error)) {
    if (!draft_->finish()) throw cannot_write(to_text(target_), draft_->reason());
    return;
  }
  // Nothing is moved before everything can be.
  for (const std::string& name : names_) {
    const fs::file_status status = fs::status(target_ / name, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
      const bool is_folder = fs::is_directory(status);
      throw cannot_write(to_text(target_ / name), is_folder ? "it is a folder" : "it is a pipe or a device");
    }
  }
  for (const std::string& name : names_) {
    std::string reason;
    if (!drafts::replace(draft_->path() / name, target_ / name, reason)) {
      throw cannot_write(to_text(target_ / name), reason);
    }
  }
}

}  // namespace tavdhost
