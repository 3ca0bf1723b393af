#include "catalogue/kind_words.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "base/errors.h"
#include "base/text.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

constexpr KindWord kWords[] = {
    {TAVD_KIND_RESISTANCE, "resistance"},
    {TAVD_KIND_RESISTANCE_VELOCITY, "resistance-by-velocity"},
    {TAVD_KIND_RESISTANCE_POINTS, "curve"},
    {TAVD_KIND_LIMITS, "throttle"},
    {TAVD_KIND_DAMPER, "damper"},
    {TAVD_KIND_DAMPER_VELOCITY, "damper-by-velocity"},
    {TAVD_KIND_RANGE, "range"},
    {TAVD_KIND_FAN, "fan"},
};

bool is_number(const KindWord& known, std::string_view name) {
  return name == std::to_string(known.kind) || name == std::to_string(known.kind + TAVD_KIND_TOTAL_PRESSURE);
}

std::string all_words() {
  std::string all;
  for (const KindWord& known : kWords) {
    all += (all.empty() ? "" : ", ") + std::string(known.word) + " (" + std::to_string(known.kind) + ')';
  }
  return all;
}

}  // namespace

std::span<const KindWord> kind_words() {
  return kWords;
}

const KindWord& kind_named(std::string_view name) {
  const auto* found = std::ranges::find_if(kWords, [&](const KindWord& known) {
    return same_letters(name, known.word) || is_number(known, name);
  });
  if (found == std::end(kWords))
    throw UserError("--kind is " + in_quotes(name) + ", expected " + all_words());
  return *found;
}

std::string kind_help() {
  return "What the product is, by a word or its number: " + all_words();
}

}  // namespace tavdhost
