// Kinds of products as the commands that make entries name them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavdhost {

struct KindWord {
  std::int16_t kind;  // TAVD_KIND_
  const char* word;   // "damper"
};

std::span<const KindWord> kind_words();

// By its word or its number, with or without 100. Throws UserError that lists all.
const KindWord& kind_named(std::string_view name);

// What an option that takes one says of itself.
std::string kind_help();

// A commented source with one complete product of a kind.
struct EntryTemplate {
  std::string_view word;
  std::string_view text;
};

// One for each word, made of the files in apps/tavd/templates/.
const std::vector<EntryTemplate>& entry_templates();

}  // namespace tavdhost
