// Drafts where nothing is written: the page reads databases and keeps what it makes in memory.
#include "drafts/drafts.h"

namespace drafts {
namespace {

const std::string kReason = "nothing is written here";
const std::filesystem::path kNowhere;

}  // namespace

class File::Writing {};
File::File(const std::filesystem::path& /*target*/) {}
File::~File() = default;
bool File::write(std::string_view /*bytes*/) {
  return false;
}
bool File::finish() {
  return false;
}
const std::string& File::reason() const {
  return kReason;
}

class Folder::Holding {};
Folder::Folder(const std::filesystem::path& /*target*/, Use /*use*/) {}
Folder::~Folder() = default;
const std::filesystem::path& Folder::path() const {
  return kNowhere;
}
bool Folder::finish() {
  return false;
}
const std::string& Folder::reason() const {
  return kReason;
}

class NewFile::Holding {};
NewFile::NewFile(const std::filesystem::path& /*target*/) {}
NewFile::~NewFile() = default;
const std::filesystem::path& NewFile::path() const {
  return kNowhere;
}
Added NewFile::add() {
  return Added::kFailed;
}
const std::string& NewFile::reason() const {
  return kReason;
}

bool replace(const std::filesystem::path& /*file*/, const std::filesystem::path& /*target*/,
             std::string& reason) {
  reason = kReason;
  return false;
}

Added add(const std::filesystem::path& /*file*/, const std::filesystem::path& /*target*/,
          std::string& reason) {
  reason = kReason;
  return Added::kFailed;
}

void clear(const std::filesystem::path& /*target*/) {}

std::filesystem::path unused_name(const std::filesystem::path& target) {
  return target;
}

}  // namespace drafts
