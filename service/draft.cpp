#include "draft.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>
#include <system_error>

#include "connection.h"

namespace tavdsrv {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNameBytes = 40;
constexpr std::size_t kDigits = 16;
constexpr std::string_view kHexadecimal = "0123456789abcdef";
constexpr std::string_view kEnding = ".tavd-new";

// What the names of all drafts of a file begin with.
std::string beginning(std::string name) {
  const auto inside_character = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
  if (name.size() > kNameBytes) {
    std::size_t length = kNameBytes;
    while (length > 0 && inside_character(name[length])) --length;
    name.resize(length);
  }
  return "." + name + ".";
}

std::string random_digits() {
  std::random_device random;
  std::string digits(kDigits, '0');
  for (char& digit : digits) digit = kHexadecimal[random() % kHexadecimal.size()];
  return digits;
}

bool is_draft(const std::string& name, const std::string& begins) {
  if (name.size() != begins.size() + kDigits + kEnding.size()) return false;
  const std::string_view digits = std::string_view(name).substr(begins.size(), kDigits);
  return name.starts_with(begins) && name.ends_with(kEnding) &&
         digits.find_first_not_of(kHexadecimal) == std::string_view::npos;
}

fs::path from_utf8(const std::string& text) {
  return std::u8string(text.begin(), text.end());
}

}  // namespace

std::string draft_name(const std::string& name) {
  const std::size_t begin = name.rfind('/') + 1;  // 0 where there is none
  return name.substr(0, begin) + beginning(name.substr(begin)) + random_digits() + std::string(kEnding);
}

void remove_dead_drafts(const Place& target) noexcept try {
  const std::string begins = beginning(utf8(target.name()));
  for (const fs::directory_entry& entry : fs::directory_iterator(target.folder())) {
    const fs::path& path = entry.path();
    if (is_draft(utf8(path.filename()), begins) && entry.symlink_status().type() == fs::file_type::regular) {
      remove_unowned(path);
    }
  }
} catch (...) {
  // They are in nobody's way.
}

Draft::Draft(const Place& target) : target_(target.file()) {
  while (owned_ == nullptr) {
    path_ = target.folder() / from_utf8(draft_name(utf8(target.name())));
    owned_ = make_owned(path_);
  }
}

Draft::~Draft() {
  std::error_code ignored;
  fs::path journal = path_;
  journal += kJournal;
  fs::remove(journal, ignored);
  fs::remove(path_, ignored);
}

// What is owned is closed first: closing it later would drop the locks of another thread that finds the file
// under its new name and begins to work.
bool Draft::publish(std::error_code& problem) {
  owned_.reset();
  fs::create_hard_link(path_, target_, problem);
  if (!problem || fs::exists(target_)) return true;
  // Some file systems have no links; there the name is given by renaming.
  fs::rename(path_, target_, problem);
  return !problem;
}

}  // namespace tavdsrv
