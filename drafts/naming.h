// Names of drafts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace drafts {

// ".picture.svg.0123456789abcdef.tavd-new"
std::string draft_name(std::string_view target, std::uint64_t number);

// Whether this is the name of a draft of that target: exactly, with any number. Targets with the same first
// 40 bytes share their drafts' names.
bool is_draft_of(std::string_view name, std::string_view target);

// Whether the target lies in a folder that is a draft itself, and goes away as a whole.
bool lies_in_draft(const std::filesystem::path& target);

}  // namespace drafts
