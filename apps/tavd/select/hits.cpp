#include "select/hits.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "base/text.h"
#include "product/product.h"

namespace tavdhost {

Selected select_one(const tavdn_catalogue* catalogue, const tavdn_duty& duty, bool with_reasons) {
  Selected selected;
  selected.hits.resize(static_cast<std::size_t>(duty.wanted));
  if (with_reasons) selected.reasons.resize(tavdn_catalogue_count(catalogue));
  tavdn_fitting fitting{};
  const int code = tavdn_select(catalogue, &duty, selected.hits.size(), selected.hits.data(), &fitting,
                                with_reasons ? selected.reasons.data() : nullptr);
  if (code == TAVDN_NO_MEMORY) throw std::bad_alloc();
  if (code != TAVDN_OK) throw std::logic_error(tavdn_message("tavdn_select", code));
  selected.products = fitting.products;
  selected.hits.resize(static_cast<std::size_t>(fitting.hits));
  return selected;
}

ShownHit::ShownHit(const tavdn_catalogue* catalogue, const tavdn_hit& shown)
    : hit(shown), flow(*tavdn_flowdata(tavdn_catalogue_variant(catalogue, shown.product, shown.variant))) {
  constexpr std::size_t kTextUnits = 256;
  const tavdn_listed& listed = *tavdn_catalogue_product(catalogue, shown.product);
  class_id = printable(listed.class_id);
  object_id = printable(listed.object_id);
  code = printable(to_utf8(listed.code, kTextUnits));
  description = printable(to_utf8(listed.description, kTextUnits));
  size = size_text(listed.duct);
  for (const auto& [name, value] : chosen_parameters(flow)) {
    parameters += (parameters.empty() ? "" : " ") + printable(name) + "=" + printable(value);
  }
}

const char* reason_text(int reason) {
  return tavdn_message("TAVDN_WHY_", reason);
}

// Reasons are numbered in the order in which the conditions are asked.
std::string nearest_reason(const std::vector<unsigned char>& reasons) {
  if (reasons.empty()) return {};
  const unsigned char last = *std::ranges::max_element(reasons);
  const auto count = std::ranges::count(reasons, last);
  return std::string(reason_text(last)) + ": " + std::to_string(count) +
         (count == 1 ? " product" : " products");
}

}  // namespace tavdhost
