#include "drafts/naming.h"

#include <algorithm>

namespace drafts {

namespace {

constexpr std::size_t kTargetBytes = 40;
constexpr std::size_t kDigits = 16;
constexpr std::string_view kEnding = ".tavd-new";
constexpr std::string_view kHex = "0123456789abcdef";

// The bytes of the target's name that its drafts show; no character is cut in two.
std::string_view shown(std::string_view target) {
  if (target.size() <= kTargetBytes) return target;
  std::size_t end = kTargetBytes;
  while (end > 0 && (static_cast<unsigned char>(target[end]) & 0xC0) == 0x80) --end;
  return target.substr(0, end);
}

// Whether a name has the form of a draft's, whatever the target.
bool has_form(std::string_view name) {
  if (name.size() < 2 + kDigits + kEnding.size() || name[0] != '.' || !name.ends_with(kEnding)) return false;
  name.remove_suffix(kEnding.size());
  const std::string_view digits = name.substr(name.size() - kDigits);
  return name[name.size() - kDigits - 1] == '.' && digits.find_first_not_of(kHex) == std::string_view::npos;
}

}  // namespace

std::string draft_name(std::string_view target, std::uint64_t number) {
  std::string digits(kDigits, '0');
  for (auto at = digits.rbegin(); at != digits.rend(); ++at, number >>= 4) *at = kHex[number & 0xF];
  return '.' + std::string(shown(target)) + '.' + digits + std::string(kEnding);
}

bool is_draft_of(std::string_view name, std::string_view target) {
  const std::string_view part = shown(target);
  return has_form(name) && name.size() == 2 + part.size() + kDigits + kEnding.size() &&
         name.substr(1, part.size()) == part;
}

bool lies_in_draft(const std::filesystem::path& target) {
  const std::u8string folder = target.parent_path().filename().u8string();
  return has_form({reinterpret_cast<const char*>(folder.data()), folder.size()});
}

}  // namespace drafts
